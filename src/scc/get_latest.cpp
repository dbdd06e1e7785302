#include "scc/get_latest.h"

#include <cstdint>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kRecursive = 0x2000;
constexpr std::uint32_t kKeep = 0x20000;
constexpr std::uint32_t kGet = 0x4000000;

}  // namespace

bool GetLatest::GetLatestForProject(const std::string& projectKey) {
  session_.LoginToSourceSafe();
  const auto use = session_.Use();
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

bool GetLatest::HasProjects() {
  if (window_.ProjectMembers.Count() > 0) return true;
  dialogs_.Show({"No projects loaded"});
  return false;
}

void GetLatest::mnuToolsGetLatestALL_Click() {
  if (session_.Refuses()) return;
  const auto use = session_.Use();
  Procedure(report_, ": frmBuilder.mnuToolsGetLatestALL_Click").Run([&](Procedure& on) {
    on([&] { session_.LoginToSourceSafe(); });
    if (!on([&] { return HasProjects(); })) return;
    const auto picture = on([&] { return session_.Database().Snapshot(); });
    // The paths as they are now: the client may let the user remove projects meanwhile.
    std::vector<std::string> paths;
    for (const auto& member : window_.ProjectMembers) paths.push_back(member->path);
    for (const std::string& path : paths) {
      on([&] { log_.WriteLog("Getting Latest for " + path); });
      on([&] { GetLatestForProject(path); });
    }
    on([&] { window_.SetStatus("Get completed"); });
  });
}

void GetLatest::mnuToolsGetLatestChanged_Click() {
  if (session_.Refuses()) return;
  const auto use = session_.Use();
  Procedure(report_, ": frmBuilder.mnuToolsGetLatestChanged_Click").Run([&](Procedure& on) {
    on([&] { window_.mousePointer.Set(MousePointer::Hourglass); });
    on([&] { session_.LoginToSourceSafe(); });
    if (on([&] { return HasProjects(); })) GetMarked(on);
    // Shown in every case, as ever.
    on([&] { window_.SetStatus("Changed projects now up to date"); });
  });
  window_.mousePointer.Set(MousePointer::Default);
}

void GetLatest::GetMarked(Procedure& on) {
  std::vector<std::string> marked;
  for (const TreeNode* node : window_.ProjectNodes()) {
    if (node->ImageOf() == Image::ProjectWarning) marked.push_back(node->Key());
  }
  const auto picture = on([&] { return session_.Database().Snapshot(); });
  bool succeeded = false;
  for (const std::string& key : marked) {
    const TreeNode* node = window_.tvwProjects.Find(key);
    if (node == nullptr) continue;
    succeeded = on([&] { return GetLatestForProject(std::string(node->Text())); });
    if (!succeeded) return;
    on([&] { window_.tvwProjects.Item(key).SetImage(Image::VbProject); });
  }
  if (succeeded) on([&] { window_.SetStatus("Get completed"); });
}

void GetLatest::mnuTreePopupGetLatest_Click() {
  if (session_.Refuses()) return;
  Procedure(report_, ": frmBuilder.mnuTreePopupGetLatest_Click").Run([&](Procedure& on) {
    const TreeNode* selected = window_.tvwProjects.Selected();
    if (selected == nullptr) on([] { throw RuntimeError(ErrorNumber::ObjectNotSet); });
    if (selected == nullptr) return;
    const std::string key = selected->Key();
    const std::string path = selected->Text();
    on([&] { GetLatestForProject(path); });
    on([&] { window_.tvwProjects.Item(key).SetImage(Image::VbProject); });
  });
}

}  // namespace gorbex
