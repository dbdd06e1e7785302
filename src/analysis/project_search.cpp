#include "analysis/project_search.h"

#include <algorithm>

#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/text.h"

namespace gorbex {
namespace {

// A heading, a member or a property is not searched: its project counts as selected.
const TreeNode* Anchor(const TreeNode* node) {
  while (node != nullptr && !node->KeyStartsWith(node_prefix::kProject) &&
         !IsReferenceNode(*node)) {
    node = node->Parent();
  }
  return node;
}

}  // namespace

bool ProjectSearch::IsWanted(const std::string& path, std::string_view wanted) const {
  if (ContainsIgnoringCase(path, wanted)) return true;
  const clsMember* member = window_.ProjectMembers.Find(path);
  return member != nullptr && (ContainsIgnoringCase(member->Name, wanted) ||
                               ContainsIgnoringCase(member->EXEName, wanted));
}

// The nodes of references are only made when somebody looks at them, which here are the few that
// may be wanted.
bool ProjectSearch::MayHaveReference(const TreeNode& project, std::string_view wanted) const {
  const clsMember* member = window_.ProjectMembers.Find(project.Text());
  if (member == nullptr) return true;
  const auto holds = [&](const std::string& value) { return ContainsIgnoringCase(value, wanted); };
  return std::any_of(member->Refs.begin(), member->Refs.end(), holds) ||
         std::any_of(member->Objects.begin(), member->Objects.end(), holds);
}

ProjectSearch::Hit ProjectSearch::FindNode(std::string_view wanted, Direction direction) {
  if (wanted.empty()) return {};
  const TreeNode* anchor = Anchor(window_.tvwProjects.Selected());
  SearchHits<TreeNode> hits(anchor);
  for (TreeNode* project : window_.ProjectNodes()) {
    hits.Look(*project, IsWanted(project->Text(), wanted));
    const bool holdsAnchor = anchor != nullptr && anchor != project &&
                             anchor->Parent() != nullptr && anchor->Parent()->Parent() == project;
    if (!holdsAnchor && !MayHaveReference(*project, wanted)) continue;
    ForEachReference(*project, [&](TreeNode& reference) {
      hits.Look(reference, ContainsIgnoringCase(reference.Text(), wanted));
    });
  }
  const Hit hit = hits.Hit(direction);
  if (hit.number == 0) return hit;
  TreeNode& found = hits.At(hit);
  window_.tvwProjects.Select(&found);
  display_.ShowProjectDetails(found);
  return hit;
}

ProjectSearch::Hit ProjectSearch::FindRow(std::string_view wanted, Direction direction) {
  if (wanted.empty()) return {};
  ListView& queue = window_.lvwQueue;
  SearchHits<ListRow> hits(queue.Selected());
  for (const auto& row : queue.Rows()) hits.Look(*row, IsWanted(row->Key(), wanted));
  const Hit hit = hits.Hit(direction);
  if (hit.number > 0) queue.Select(&hits.At(hit));
  return hit;
}

}  // namespace gorbex
