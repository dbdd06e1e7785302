#include "platform/linux/source_control.h"

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

[[noreturn]] void RaiseNoClient() {
  throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                      "No source-control client is available");
}

}  // namespace

void ClosedSourceControl::Open(const std::string& /*iniPath*/, const std::string& /*user*/,
                               const std::string& /*password*/) {
  RaiseNoClient();
}

std::unique_ptr<SourceControlItem> ClosedSourceControl::VSSItem(const std::string& /*spec*/) {
  RaiseNoClient();
}

}  // namespace gorbex
