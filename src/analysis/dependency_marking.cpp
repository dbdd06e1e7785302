#include "analysis/dependency_marking.h"

#include "core/node_key.h"
#include "core/reference_value.h"

namespace gorbex {
namespace {

// A reference to another project of a compiler group. Case matters: the detail list asks with
// lower-cased values.
bool IsProjectReference(std::string_view firstField) {
  return firstField.starts_with("*\\a");
}

constexpr std::string_view kDependant = "Dependant on other project in group";

enum DataColumn : std::size_t { kVersion = 1, kComponent, kRegistryPath, kDescription, kVerdict };

}  // namespace

void DependencyMarking::ColorItem(ListRow& row, Colour colour) {
  row.SetTextColour(colour);
}

Verdict DependencyMarking::Judge(std::string_view firstField, const ListRow& row) const {
  const auto& component = row.SubItem(kComponent);
  if (!group_.FindGroupDependency(component, window_.lvwData.Tag()).empty()) {
    return {Image::Dependancy, std::string(kDependant), ""};
  }
  if (IsProjectReference(firstField)) return {Image::Dependancy, "", ""};
  return references_.RefType(GetGUID(firstField), row.SubItem(kVersion), component);
}

void DependencyMarking::ShowReferenceRow(const std::string& value) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    ListRow& row = window_.lvwData.Add("", "", Image::None);
    const auto first = on([&] { return ReferenceField(value, 0); });
    row.SetText(std::string(IsProjectReference(first) ? first : GetGUID(first)));
    on([&] { row.SetSubItem(kVersion, std::string(ReferenceField(value, 1))); });
    on([&] { row.SetSubItem(kComponent, std::string(ComponentPath(value))); });
    const Verdict verdict = on([&] { return Judge(first, row); });
    row.SetIcon(verdict.image);
    row.SetSubItem(kRegistryPath, verdict.registryPath);
    on([&] { row.SetSubItem(kDescription, std::string(ReferenceField(value, 4))); });
    row.SetSubItem(kVerdict, verdict.text);
    const bool invalid = verdict.image == Image::InvalidReference;
    if (invalid) on([&] { ExpandShownProject(); });
    on([&] { ColorItem(row, invalid ? Colour::ButtonShadow : Colour::WindowText); });
  });
}

void DependencyMarking::ExpandShownProject() {
  const TreeView& tree = window_.tvwProjects;
  const std::string& path = window_.lvwData.Tag();
  tree.Item(NodeKey(node_prefix::kProject, path)).SetExpanded(true);
  tree.Item(NodeKey(node_prefix::kReferences, path)).SetExpanded(true);
}

void DependencyMarking::MarkReferenceNode(TreeNode& node) {
  if (!HasPrefix(node.Key(), node_prefix::kReference) &&
      !HasPrefix(node.Key(), node_prefix::kObject)) {
    return;
  }
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const std::string& value = node.Text();
    const auto first = on([&] { return ReferenceField(value, 0); });
    on([&] { node.SetChecked(references_.IsvalidRef(GetGUID(first))); });
    const auto component = on([&] { return ComponentPath(value); });
    // The project's own binary is not excluded here: a project that names the binary it keeps
    // compatibility with shows as dependent in the tree, though not in the detail list.
    Image image = node.ImageOf();
    if (!on([&] { return group_.FindGroupDependency(component, ""); }).empty()) {
      image = Image::Dependancy;
    } else {
      const auto version = on([&] { return ReferenceField(value, 1); });
      on([&] { image = references_.RefType(GetGUID(first), version, component).image; });
    }
    node.SetImage(image);
    node.SetTextColour(image == Image::InvalidReference ? Colour::ButtonShadow
                                                        : Colour::WindowText);
  });
}

void DependencyMarking::mnuToolsDependancies_Click() {
  Procedure(report_, ": frmBuilder.mnuToolsDependancies_Click").Run([&](Procedure& on) {
    on([&] { window_.SetStatus("Scanning dependancies, please wait."); });
    on([&] { log_.WriteLog("Scanning dependancies"); });
    const std::size_t count = window_.tvwProjects.Count();
    for (std::size_t i = 1; i <= count; ++i) {
      on([&] { MarkReferenceNode(window_.tvwProjects.At(i)); });
    }
    on([&] { window_.SetStatus("Dependancy scan now complete."); });
  });
}

}  // namespace gorbex
