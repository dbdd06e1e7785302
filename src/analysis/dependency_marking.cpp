#include "analysis/dependency_marking.h"

#include "core/list_columns.h"
#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/reference_value.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// A reference to another project of a compiler group. Case matters: the detail list asks with
// lower-cased values.
bool IsProjectReference(std::string_view firstField) {
  return firstField.starts_with("*\\a");
}

// The heading "References" is a project's first child.
void ExpandReferences(TreeNode& project) {
  project.SetExpanded(true);
  if (!project.Children().empty()) project.Children().front()->SetExpanded(true);
}

constexpr std::string_view kDependant = "Dependant on other project in group";

}  // namespace

void DependencyMarking::ColorItem(ListRow& row, Colour colour) {
  row.SetTextColour(colour);
}

Verdict DependencyMarking::Judge(std::string_view firstField, const ListRow& row) const {
  const auto& component = row.SubItem(reference_column::kComponent);
  if (group_.FindProducer(component, window_.lvwData.Tag())) {
    return {Image::Dependancy, std::string(kDependant), ""};
  }
  if (IsProjectReference(firstField)) return {Image::Dependancy, "", ""};
  return references_.RefType(GetGUID(firstField), row.SubItem(reference_column::kVersion),
                             component);
}

void DependencyMarking::ShowReferenceRow(const std::string& value) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    ListRow& row = window_.lvwData.Add("", "", Image::None);
    const auto first = on([&] { return ReferenceField(value, 0); });
    row.SetText(std::string(IsProjectReference(first) ? first : GetGUID(first)));
    on([&] { row.SetSubItem(reference_column::kVersion, std::string(ReferenceField(value, 1))); });
    on([&] { row.SetSubItem(reference_column::kComponent, std::string(ComponentPath(value))); });
    const Verdict verdict = on([&] { return Judge(first, row); });
    row.SetIcon(verdict.image);
    row.SetSubItem(reference_column::kRegistryPath, verdict.registryPath);
    on([&] {
      row.SetSubItem(reference_column::kDescription, std::string(ReferenceField(value, 4)));
    });
    row.SetSubItem(reference_column::kVerdict, verdict.text);
    const bool invalid = verdict.image == Image::InvalidReference;
    if (invalid) on([&] { ExpandShownProject(); });
    on([&] { ColorItem(row, invalid ? Colour::ButtonShadow : Colour::WindowText); });
  });
}

void DependencyMarking::ExpandShownProject() {
  const std::string& path = window_.lvwData.Tag();
  ExpandReferences(window_.tvwProjects.Item(NodeKey(node_prefix::kProject, path)));
}

void DependencyMarking::MarkReferenceNode(TreeNode& node) {
  if (!IsReferenceNode(node)) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const Judged judged = JudgeNode(on, node);
    Show(node, judged.producer ? Image::Dependancy : VerdictOf(on, node, judged));
  });
}

// A project that is shown while its build project is loaded stays expanded if the detail list has
// an invalid row. At that moment the list knows only the records read before, and it takes every
// project reference for valid.
void DependencyMarking::MarkRead(TreeNode& node, const ProjectBranch& branch, Group group) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const Judged judged = JudgeNode(on, node);
    const bool wasKnown = judged.producer && judged.producer->rank < branch.earlierRecords;
    const Image then = wasKnown ? Image::Dependancy : VerdictOf(on, node, judged);
    if (then == Image::InvalidReference && branch.isRead &&
        !IsProjectReference(LowerCase(judged.firstField))) {
      on([&] { ExpandReferences(*branch.project); });
    }
    Show(node, judged.producer && group == Group::Whole ? Image::Dependancy : then);
  });
}

// The project's own binary is not excluded here: a project that names the binary it keeps
// compatibility with shows as dependent in the tree, though not in the detail list.
DependencyMarking::Judged DependencyMarking::JudgeNode(Procedure& on, TreeNode& node) const {
  Judged judged;
  const std::string& value = node.Text();
  judged.firstField = on([&] { return ReferenceField(value, 0); });
  on([&] { node.SetChecked(references_.IsvalidRef(GetGUID(judged.firstField))); });
  judged.component = on([&] { return ComponentPath(value); });
  judged.producer = on([&] { return group_.FindProducer(judged.component, ""); });
  return judged;
}

Image DependencyMarking::VerdictOf(Procedure& on, const TreeNode& node,
                                   const Judged& judged) const {
  const auto version = on([&] { return ReferenceField(node.Text(), 1); });
  Image image = node.ImageOf();
  on([&] {
    image = references_.RefType(GetGUID(judged.firstField), version, judged.component).image;
  });
  return image;
}

void DependencyMarking::Show(TreeNode& node, Image image) {
  node.SetImage(image);
  node.SetTextColour(image == Image::InvalidReference ? Colour::ButtonShadow : Colour::WindowText);
}

void DependencyMarking::MarkBranch(const ProjectBranch& branch) {
  if (branch.project == nullptr) return;
  ForEachReference(*branch.project, [&](TreeNode& node) { MarkReferenceNode(node); });
}

void DependencyMarking::MarkBranches(const std::vector<ProjectBranch>& branches) {
  for (const auto& branch : branches) MarkRead(branch, Group::Earlier);
}

void DependencyMarking::MarkRead(const ProjectBranch& branch, Group group) {
  if (branch.project == nullptr) return;
  ForEachReference(*branch.project, [&](TreeNode& node) { MarkRead(node, branch, group); });
}

void DependencyMarking::ScanBranches(const std::vector<ProjectBranch>& branches) {
  Scan([&](Procedure& on) {
    for (const auto& branch : branches) on([&] { MarkRead(branch, Group::Whole); });
  });
}

void DependencyMarking::mnuToolsDependancies_Click() {
  Scan([&](Procedure& on) {
    for (TreeNode* project : window_.ProjectNodes()) {
      ForEachReference(*project, [&](TreeNode& node) { on([&] { MarkReferenceNode(node); }); });
    }
  });
}

void DependencyMarking::Scan(const std::function<void(Procedure& on)>& markAll) {
  Procedure(report_, ": frmBuilder.mnuToolsDependancies_Click").Run([&](Procedure& on) {
    on([&] { window_.SetStatus("Scanning dependancies, please wait."); });
    on([&] { log_.WriteLog("Scanning dependancies"); });
    markAll(on);
    on([&] { window_.SetStatus("Dependancy scan now complete."); });
  });
}

}  // namespace gorbex
