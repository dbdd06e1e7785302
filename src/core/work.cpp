#include "core/work.h"

namespace gorbex {

std::shared_ptr<void> Work::Begin(Task task) {
  if (task == Task::Run || task == Task::TestProject || task == Task::Mailbox) stops_ = false;
  if (++counts_[Index(task)] == 1) changed.Emit();
  return {nullptr, [this, task](void*) { End(task); }};
}

void Work::End(Task task) {
  if (--counts_[Index(task)] == 0) changed.Emit();
}

std::shared_ptr<void> Work::BeginAlone(Task task) {
  auto turn = TakeTurn();
  if (turn == nullptr) return nullptr;
  auto begun = Begin(task);
  return std::make_shared<std::array<std::shared_ptr<void>, 2>>(
      std::array{std::move(turn), std::move(begun)});
}

std::shared_ptr<void> Work::TakeTurn() {
  auto turn = turn_.lock();
  if (turn != nullptr) return turn;
  turn = keepOthersOut_();
  turn_ = turn;
  if (turn != nullptr) turnTaken.Emit();
  return turn;
}

}  // namespace gorbex
