#include "analysis/project_search.h"

#include <algorithm>

#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/text.h"

namespace gorbex {
namespace {

/// The hits in their order, and where among them the selection is.
template <class Item>
class Hits {
 public:
  explicit Hits(const Item* selected) : selected_(selected) {}

  void Look(Item& item, bool isHit) {
    if (&item == selected_) before_ = items_.size();
    if (isHit) items_.push_back(&item);
    if (&item == selected_) after_ = items_.size();
  }

  /// From 1; 0 without a hit.
  [[nodiscard]] std::size_t Number(ProjectSearch::Direction direction) const {
    const std::size_t count = items_.size();
    if (count == 0) return 0;
    if (direction == ProjectSearch::Direction::Next) return after_ % count + 1;
    if (direction == ProjectSearch::Direction::Here) return before_ % count + 1;
    return (before_ + count - 1) % count + 1;
  }

  [[nodiscard]] Item& At(std::size_t number) const { return *items_[number - 1]; }
  [[nodiscard]] std::size_t Count() const { return items_.size(); }

 private:
  const Item* selected_;
  std::vector<Item*> items_;
  std::size_t before_ = 0;  ///< hits before the selection
  std::size_t after_ = 0;   ///< hits up to it
};

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
  Hits<TreeNode> hits(anchor);
  for (TreeNode* project : window_.ProjectNodes()) {
    hits.Look(*project, IsWanted(project->Text(), wanted));
    const bool holdsAnchor = anchor != nullptr && anchor != project &&
                             anchor->Parent() != nullptr && anchor->Parent()->Parent() == project;
    if (!holdsAnchor && !MayHaveReference(*project, wanted)) continue;
    ForEachReference(*project, [&](TreeNode& reference) {
      hits.Look(reference, ContainsIgnoringCase(reference.Text(), wanted));
    });
  }
  const Hit hit{hits.Number(direction), hits.Count()};
  if (hit.number == 0) return hit;
  TreeNode& found = hits.At(hit.number);
  window_.tvwProjects.Select(&found);
  display_.ShowProjectDetails(found);
  return hit;
}

ProjectSearch::Hit ProjectSearch::FindRow(std::string_view wanted, Direction direction) {
  if (wanted.empty()) return {};
  ListView& queue = window_.lvwQueue;
  Hits<ListRow> hits(queue.Selected());
  for (const auto& row : queue.Rows()) hits.Look(*row, IsWanted(row->Key(), wanted));
  const Hit hit{hits.Number(direction), hits.Count()};
  if (hit.number > 0) queue.Select(&hits.At(hit.number));
  return hit;
}

}  // namespace gorbex
