#include "analysis/project_display.h"

#include "core/list_columns.h"
#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// Null for the root, for user controls and for numbered property rows.
const TreeNode* ProjectOf(const TreeNode& node) {
  const std::string key = node.Key();
  const std::string_view prefix = std::string_view(key).substr(0, 2);
  if (prefix == node_prefix::kProject) return &node;
  if (prefix == "r)" || prefix == "o)" || prefix == "m)" || prefix == "i)") return node.Parent();
  if (prefix == "r-" || prefix == "o-" || prefix == "m-" || prefix == "i-") {
    return node.Parent() == nullptr ? nullptr : node.Parent()->Parent();
  }
  return nullptr;
}

std::string OrPlaceholder(const std::string& value, const char* placeholder) {
  return value.empty() ? placeholder : value;
}

}  // namespace

bool ProjectDisplay::tvwProjects_MouseDown(TreeNode* node) {
  window_.txtLogFile.visible.Set(false);
  if (node == nullptr) return false;
  window_.tvwProjects.Select(node);
  ShowProjectDetails(*node);
  return node->KeyStartsWith(node_prefix::kProject);
}

void ProjectDisplay::ShowProjectDetails(TreeNode& node) {
  const TreeNode* project = ProjectOf(node);
  if (project == nullptr) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const clsMember* member = on([&] { return &window_.ProjectMembers.Item(project->Text()); });
    if (member != nullptr) ShowLabels(on, *project, *member);
    on([&] { ShowProjectReferences(project->Text()); });
  });
}

void ProjectDisplay::ShowLabels(Procedure& on, const TreeNode& project, const clsMember& member) {
  on([&] { window_.lblCompatability.Set(OrPlaceholder(member.Compatibility, "<none set>")); });
  on([&] { window_.lblFilename.Set(OrPlaceholder(project.Text(), "<not saved>")); });
  on([&] { window_.lblProjectName.Set(OrPlaceholder(member.Name, "<no name>")); });
  on([&] { window_.lblVersion.Set(OrPlaceholder(member.Version, "<no version set>")); });
  on([&] { window_.lblBinary.Set(OrPlaceholder(member.BuildName, "<not specified>")); });
}

void ProjectDisplay::ShowProjectReferences(const std::string& projectPath) {
  Procedure(report_, ": frmBuilder.ShowProjectReferences").Run([&](Procedure& on) {
    const clsMember* member = on([&] { return &window_.ProjectMembers.Item(projectPath); });
    if (member == nullptr || window_.lvwData.Tag() == projectPath) return;
    window_.lvwData.SetTag(projectPath);
    on([&] { window_.lvwData.Clear(); });
    for (const auto* values : {&member->Refs, &member->Objects}) {
      for (const std::string& value : *values) {
        on([&] { marking_.ShowReferenceRow(LowerCase(value)); });
      }
    }
  });
}

void ProjectDisplay::FollowQueue() {
  const ListRow* row = window_.lvwQueue.Selected();
  if (row == nullptr || row == RowOfSelectedNode()) return;
  TreeNode* project = window_.tvwProjects.Find(NodeKey(node_prefix::kProject, row->Key()));
  if (project == nullptr) return;
  window_.tvwProjects.Select(project);
  ShowProjectDetails(*project);
}

void ProjectDisplay::FollowTree() {
  ListRow* row = RowOfSelectedNode();
  if (row != nullptr && row != window_.lvwQueue.Selected()) window_.lvwQueue.Select(row);
}

ListRow* ProjectDisplay::RowOfSelectedNode() const {
  const TreeNode* node = window_.tvwProjects.Selected();
  const TreeNode* project = node == nullptr ? nullptr : ProjectOf(*node);
  return project == nullptr ? nullptr : window_.lvwQueue.Find(project->Text());
}

bool ProjectDisplay::ShowReference(const std::string& project, const std::string& reference) {
  TreeNode* node = window_.tvwProjects.Find(NodeKey(node_prefix::kProject, project));
  if (node == nullptr) return false;
  window_.tvwProjects.Select(node);
  ShowProjectDetails(*node);
  // The list has a row for each of these nodes, in the same order.
  std::size_t position = 0;
  std::size_t found = 0;
  ForEachReference(*node, [&](const TreeNode& each) {
    ++position;
    if (found == 0 && each.Text() == reference) found = position;
  });
  if (found >= 1 && found <= window_.lvwData.Count())
    window_.lvwData.Select(&window_.lvwData.At(found));
  return true;
}

void ProjectDisplay::RefreshReferences() {
  ListView& list = window_.lvwData;
  const std::string shown = list.Tag();
  if (shown.empty()) return;
  const std::size_t selected = list.Selected() == nullptr ? 0 : list.PositionOf(*list.Selected());
  list.SetTag("");
  ShowProjectReferences(shown);
  if (selected >= 1 && selected <= list.Count()) list.Select(&list.At(selected));
}

void ProjectDisplay::FollowFile(const std::string& project, const std::string& oldText,
                                const std::string& newText) {
  window_.ProjectMembers.ReplaceInReferences(project, oldText, newText);
  const TreeNode* node = window_.tvwProjects.Find(NodeKey(node_prefix::kProject, project));
  if (node == nullptr) return;
  ForEachReference(*node, [&](TreeNode& reference) {
    std::string text = reference.Text();
    ReplaceIgnoringCase(text, oldText, newText);
    if (text != reference.Text()) reference.SetText(text);
  });
}

void ProjectDisplay::RepointReferences(const std::string& project, const std::string& oldText,
                                       const std::string& newText) {
  FollowFile(project, oldText, newText);
  if (const TreeNode* node = window_.tvwProjects.Find(NodeKey(node_prefix::kProject, project))) {
    marking_.MarkProject(*node);
  }
  if (window_.lvwData.Tag() != project) return;
  RefreshReferences();
  // The list shows references in lower case, but the chosen name in its own letter case.
  for (const auto& row : window_.lvwData.Rows()) {
    const std::string& component = row->SubItem(reference_column::kComponent);
    if (EqualsIgnoringCase(component, newText)) {
      row->SetSubItem(reference_column::kComponent, newText);
    }
  }
}

}  // namespace gorbex
