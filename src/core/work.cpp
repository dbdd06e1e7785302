#include "core/work.h"

#include <new>
#include <utility>

namespace gorbex {

std::shared_ptr<void> Work::Begin(Task task) {
  if (task == Task::Run || task == Task::TestProject) runStops_ = false;
  if (task == Task::Mailbox) lookStops_ = false;
  ++counts_[Index(task)];
  std::shared_ptr<void> begun(nullptr, [this, task](void*) { End(task); });
  if (counts_[Index(task)] == 1) changed.Emit();
  return begun;
}

// A task also ends while an error leaves a function.
void Work::End(Task task) {
  if (--counts_[Index(task)] > 0) return;
  try {
    changed.Emit();
  } catch (const std::bad_alloc&) {
    return;  // whoever listens asks again at the next change
  }
}

void Work::StopAfterThis() {
  runStops_ = Goes(Task::Run);
  lookStops_ = Goes(Task::Mailbox);
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
