#include "scc/change_scan.h"

#include <vector>

#include "core/node_key.h"

namespace gorbex {

void ChangeScan::mnuToolsHighlight_Click() {
  if (session_.Refuses()) return;
  session_.LoginToSourceSafe();
  if (session_.DatabaseUser().empty()) return;
  const auto use = session_.Use();
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { window_.SetStatus("Checking for Project Changes.."); });
    on([&] { window_.mousePointer.Set(MousePointer::Hourglass); });
    Scan(on);
    on([&] { window_.SetStatus("Finished scanning for changes"); });
  });
  window_.mousePointer.Set(MousePointer::Default);
}

void ChangeScan::Scan(Procedure& on) {
  // All questions are about one and the same state of the database.
  const auto picture = on([&] { return session_.Database().Snapshot(); });
  std::vector<Project> projects;
  for (const auto& member : window_.ProjectMembers) {
    if (!member->VSSProject.empty()) projects.push_back({member->path, member->VSSProject});
  }
  std::size_t changed = 0;
  for (const Project& project : projects) {
    if (!on([&] { return IsChanged(project); })) continue;
    ++changed;
    on([&] {
      window_.tvwProjects.Item(NodeKey(node_prefix::kProject, project.path))
          .SetImage(Image::ProjectWarning);
    });
  }
  scanned.Emit(changed);
}

// A project that cannot be compared is skipped; listeners are told why.
bool ChangeScan::IsChanged(const Project& project) {
  std::string failure;
  const auto tried = [&](const auto& question) -> decltype(question()) {
    try {
      return question();
    } catch (const RuntimeError& error) {
      if (failure.empty()) failure = error.Description();
      return {};
    }
  };
  const auto item = tried([&] { return session_.VSSItem(project.spec); });
  if (item == nullptr && failure.empty()) failure = project.spec + " is not in the database";
  const auto children = tried([&] { return item ? item->Items() : decltype(item->Items()){}; });
  for (const auto& child : children) {
    const bool differs =
        tried([&] { return child->Type() == SourceItemType::File && child->IsDifferent(); });
    if (differs) return true;
  }
  if (!failure.empty()) notCompared.Emit(project.path, failure);
  return false;
}

}  // namespace gorbex
