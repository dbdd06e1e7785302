#include "scc/get_latest.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::uint32_t kRecursive = 0x2000;
constexpr std::uint32_t kKeep = 0x20000;
constexpr std::uint32_t kGet = 0x4000000;

}  // namespace

std::shared_ptr<void> GetLatest::BeginBatch() {
  auto batch = std::make_shared<Batch>();
  batch_ = batch;
  return batch;
}

void GetLatest::LogIn() {
  const auto batch = batch_.lock();
  if (batch && std::exchange(batch->isBegun, true)) return;
  session_.LoginToSourceSafe();
  if (!batch) return;
  batch->reserved = session_.Reserve();
  const auto use = session_.Use();
  batch->picture = session_.Database().Snapshot();
}

LatestResult GetLatest::GetLatestForProject(const std::string& projectKey) {
  LogIn();
  const auto use = session_.Use();
  // A copy: the client may let the user act, who may remove the project.
  const std::string spec = window_.ProjectMembers.Item(projectKey).VSSProject;
  window_.SetStatus("Getting " + spec);
  if (spec.empty()) return {LatestResult::Kind::NotControlled};
  return GetItem(spec);
}

LatestResult GetLatest::GetItem(const std::string& spec) {
  std::unique_ptr<SourceControlItem> item;
  try {
    item = session_.VSSItem(spec);
  } catch (const RuntimeError& error) {
    window_.SetStatus("Failed GET : " + error.Description());
    const std::string closed = session_.WhyClosed();
    return {LatestResult::Kind::Failed, closed.empty() ? error.Description() : closed};
  }
  try {
    if (item == nullptr) throw NoSuchItem(spec);
    std::string toDo = item->Get(item->LocalSpec(), kRecursive + kKeep + kGet);
    return {LatestResult::Kind::Got, {}, std::move(toDo)};
  } catch (const RuntimeError& error) {
    window_.SetStatus(error.Description());
    return {LatestResult::Kind::Failed, error.Description()};
  }
}

// For a command of the user's, who is there to be told.
bool GetLatest::GetWatched(const std::string& path) {
  const LatestResult result = GetLatestForProject(path);
  if (!result.toDo.empty()) dialogs_.Show({result.toDo});
  return result.Succeeded();
}

bool GetLatest::IsLoaded() {
  // An open build project may be without projects.
  if (window_.ProjectMembers.Count() > 0 || !window_.fileName.empty()) return true;
  dialogs_.Show({"No projects loaded"});
  return false;
}

void GetLatest::mnuToolsGetLatestALL_Click() {
  if (session_.Refuses()) return;
  const auto use = session_.Use();
  Procedure(report_, ": frmBuilder.mnuToolsGetLatestALL_Click").Run([&](Procedure& on) {
    const auto batch = BeginBatch();
    on([&] { LogIn(); });
    if (!on([&] { return IsLoaded(); })) return;
    // The paths as they are now: the client may let the user remove projects meanwhile.
    std::vector<std::string> paths;
    for (const auto& member : window_.ProjectMembers) paths.push_back(member->path);
    for (const std::string& path : paths) {
      on([&] { log_.WriteLog("Getting Latest for " + path); });
      on([&] { GetWatched(path); });
    }
    on([&] { window_.SetStatus("Get completed"); });
  });
}

void GetLatest::mnuToolsGetLatestChanged_Click() {
  if (session_.Refuses()) return;
  const auto use = session_.Use();
  Procedure(report_, ": frmBuilder.mnuToolsGetLatestChanged_Click").Run([&](Procedure& on) {
    on([&] { window_.mousePointer.Set(MousePointer::Hourglass); });
    const auto batch = BeginBatch();
    on([&] { LogIn(); });
    if (on([&] { return IsLoaded(); })) GetMarked(on);
    // Shown in every case, as always.
    on([&] { window_.SetStatus("Changed projects now up to date"); });
  });
  window_.mousePointer.Set(MousePointer::Default);
}

void GetLatest::GetMarked(Procedure& on) {
  std::vector<std::string> marked;
  for (const TreeNode* node : window_.ProjectNodes()) {
    if (node->ImageOf() == Image::ProjectWarning) marked.push_back(node->Key());
  }
  bool succeeded = false;
  for (const std::string& key : marked) {
    const TreeNode* node = window_.tvwProjects.Find(key);
    if (node == nullptr) continue;
    succeeded = on([&] { return GetWatched(std::string(node->Text())); });
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
    on([&] { GetWatched(path); });
    on([&] { window_.tvwProjects.Item(key).SetImage(Image::VbProject); });
  });
}

}  // namespace gorbex
