#include "tests/faults/failing_calls.h"

#include <utility>

namespace gorbex::test {
namespace {

FailingCalls* now = nullptr;

}  // namespace

FailingCalls::FailingCalls(int failing, const Fault& fault) : failing_(failing), fault_(fault) {
  now = this;
}

FailingCalls::~FailingCalls() {
  now = nullptr;
}

bool FailingCalls::Tries(Fault::Kind kind) {
  return now != nullptr && now->fault_.kind == kind;
}

const Fault* FailingCalls::Strikes(Fault::Kind kind) {
  return Tries(kind) && ++now->count_ == now->failing_ ? &now->fault_ : nullptr;
}

const Fault* FailingCalls::FailsRest() {
  return now != nullptr && std::exchange(now->failsRest_, false) ? &now->fault_ : nullptr;
}

const Fault* FailingCalls::ExpectRest() {
  now->failsRest_ = true;
  return nullptr;
}

}  // namespace gorbex::test
