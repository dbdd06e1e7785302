#include "scc/change_scan.h"

#include <utility>
#include <vector>

#include "core/node_key.h"
#include "core/procedure.h"

namespace gorbex {

void ChangeScan::mnuToolsHighlight_Click() {
  session_.LoginToSourceSafe();
  if (session_.DatabaseUser().empty()) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { window_.SetStatus("Checking for Project Changes.."); });
    on([&] { window_.mousePointer.Set(MousePointer::Hourglass); });
    // All questions are about one and the same state of the database.
    const auto picture = on([&] { return session_.Database().Snapshot(); });
    std::vector<std::pair<std::string, std::string>> projects;
    for (const auto& member : window_.ProjectMembers) {
      if (!member->VSSProject.empty()) projects.emplace_back(member->path, member->VSSProject);
    }
    for (const auto& project : projects) {
      if (!on([&] { return IsChanged(project.second); })) continue;
      on([&] {
        window_.tvwProjects.Item(NodeKey(node_prefix::kProject, project.first))
            .SetImage(Image::ProjectWarning);
      });
    }
    on([&] { window_.SetStatus("Finished scanning for changes"); });
  });
  window_.mousePointer.Set(MousePointer::Default);
}

bool ChangeScan::IsChanged(const std::string& spec) {
  const auto item = session_.VSSItem(spec);
  if (item == nullptr) return false;
  bool changed = false;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    for (const auto& child : item->Items()) {
      if (child->Type() != SourceItemType::File) continue;
      changed = on([&] { return child->IsDifferent(); });
      if (changed) return;
    }
  });
  return changed;
}

}  // namespace gorbex
