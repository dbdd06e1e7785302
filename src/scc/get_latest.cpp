#include "scc/get_latest.h"

#include <cstdint>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kRecursive = 0x2000;
constexpr std::uint32_t kKeep = 0x20000;
constexpr std::uint32_t kGet = 0x4000000;

}  // namespace

bool GetLatest::GetLatestForProject(const std::string& projectKey) {
  session_.LoginToSourceSafe();
  // A copy: the client may let the user act, who may remove the project.
  const std::string spec = window_.ProjectMembers.Item(projectKey).VSSProject;
  window_.SetStatus("Getting " + spec);
  // A project outside source control never stands in the way of the others.
  return spec.empty() || GetItem(spec);
}

bool GetLatest::GetItem(const std::string& spec) {
  std::unique_ptr<SourceControlItem> item;
  try {
    item = session_.VSSItem(spec);
  } catch (const RuntimeError& error) {
    window_.SetStatus("Failed GET : " + error.Description());
    return false;
  }
  try {
    if (item == nullptr) throw RuntimeError(ErrorNumber::ObjectNotSet, spec);
    item->Get(item->LocalSpec(), kRecursive + kKeep + kGet);
    return true;
  } catch (const RuntimeError& error) {
    window_.SetStatus(error.Description());
    return false;
  }
}

}  // namespace gorbex
