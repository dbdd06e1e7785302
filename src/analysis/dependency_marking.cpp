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

Verdict DependencyMarking::Judge(std::string_view firstField, std::string_view version,
                                 std::string_view component, const std::string& project) const {
  if (group_.FindProducer(component, project) != nullptr) {
    return {Image::Dependancy, std::string(kDependant), ""};
  }
  if (IsProjectReference(firstField)) return {Image::Dependancy, "", ""};
  return references_.RefType(GetGUID(firstField), version, component);
}

void DependencyMarking::ShowReferenceRow(const std::string& value) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    ListRow& row = window_.lvwData.Add("", "", Image::None);
    const auto first = on([&] { return ReferenceField(value, 0); });
    row.SetText(std::string(IsProjectReference(first) ? first : GetGUID(first)));
    on([&] { row.SetSubItem(reference_column::kVersion, std::string(ReferenceField(value, 1))); });
    on([&] { row.SetSubItem(reference_column::kComponent, std::string(ComponentPath(value))); });
    const Verdict verdict = on([&] {
      return Judge(first, row.SubItem(reference_column::kVersion),
                   row.SubItem(reference_column::kComponent), window_.lvwData.Tag());
    });
    row.SetIcon(verdict.image);
    row.SetSubItem(reference_column::kRegistryPath, verdict.registryPath);
    on([&] {
      row.SetSubItem(reference_column::kDescription, std::string(ReferenceField(value, 4)));
    });
    row.SetSubItem(reference_column::kVerdict, verdict.text);
    const bool invalid = verdict.image == Image::InvalidReference;
    if (invalid) on([&] { ExpandShownProject(); });
    row.SetTextColour(invalid ? Colour::ButtonShadow : Colour::WindowText);
  });
}

void DependencyMarking::ExpandShownProject() {
  const std::string& path = window_.lvwData.Tag();
  ExpandReferences(window_.tvwProjects.Item(NodeKey(node_prefix::kProject, path)));
}

// The project's own binary is not excluded here: a project that names the binary it keeps
// compatibility with shows as dependent in the tree, though not in the detail list.
void DependencyMarking::MarkReferenceNode(TreeNode& node) {
  if (!IsReferenceNode(node)) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const std::string& value = node.Text();
    const auto guid = on([&] { return GetGUID(ReferenceField(value, 0)); });
    on([&] { node.SetChecked(references_.IsvalidRef(guid)); });
    const auto component = on([&] { return ComponentPath(value); });
    Image image = node.ImageOf();
    if (on([&] { return group_.FindProducer(component, ""); }) != nullptr) {
      image = Image::Dependancy;
    } else {
      const auto version = on([&] { return ReferenceField(value, 1); });
      on([&] { image = references_.RefType(guid, version, component).image; });
    }
    node.SetImage(image);
    node.SetTextColour(image == Image::InvalidReference ? Colour::ButtonShadow
                                                        : Colour::WindowText);
  });
}

void DependencyMarking::MarkProject(const TreeNode& project) {
  ForEachReference(project, [&](TreeNode& node) { MarkReferenceNode(node); });
}

// Expands the project when its detail list would show the reference as invalid. A reference whose
// image is neither of the two cannot be, so the slower judgement is left out.
void DependencyMarking::MarkLoadedNode(TreeNode& project, TreeNode& node) {
  MarkReferenceNode(node);
  const bool mayBeInvalid =
      node.ImageOf() == Image::InvalidReference || node.ImageOf() == Image::Dependancy;
  if (!mayBeInvalid || project.Expanded()) return;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const std::string value = LowerCase(node.Text());
    const auto first = on([&] { return ReferenceField(value, 0); });
    const auto version = on([&] { return ReferenceField(value, 1); });
    const auto component = on([&] { return ComponentPath(value); });
    const Verdict verdict = on([&] { return Judge(first, version, component, project.Text()); });
    if (verdict.image == Image::InvalidReference) ExpandReferences(project);
  });
}

void DependencyMarking::ScanLoadedProjects() {
  if (!marksLoaded_) return;
  Scan([&](TreeNode& project, TreeNode& node) { MarkLoadedNode(project, node); });
}

void DependencyMarking::mnuToolsDependancies_Click() {
  Scan([&](TreeNode&, TreeNode& node) { MarkReferenceNode(node); });
}

void DependencyMarking::Scan(const Mark& mark) {
  Procedure(report_, ": frmBuilder.mnuToolsDependancies_Click").Run([&](Procedure& on) {
    on([&] { window_.SetStatus("Scanning dependancies, please wait."); });
    on([&] { log_.WriteLog("Scanning dependancies"); });
    for (TreeNode* project : window_.ProjectNodes()) {
      ForEachReference(*project, [&](TreeNode& node) { on([&] { mark(*project, node); }); });
    }
    on([&] { window_.SetStatus("Dependancy scan now complete."); });
  });
  marked.Emit();
}

void DependencyMarking::MarkAll() {
  for (const TreeNode* project : window_.ProjectNodes()) MarkProject(*project);
  marked.Emit();
}

}  // namespace gorbex
