#include "analysis/pointed_item.h"

#include "core/file_tools.h"
#include "core/list_columns.h"
#include "core/node_key.h"
#include "core/reference_nodes.h"
#include "core/reference_value.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

// A name without a folder is found by the registry only.
std::string PathFrom(const std::string& project, std::string_view named) {
  const bool hasFolder = named.find('\\') != std::string_view::npos;
  return hasFolder ? ResolvedPath(StripPath(project), named) : std::string();
}

PointedItem Component(std::string_view firstField, std::string_view named,
                      const std::string& registered, const std::string& project) {
  if (const auto file = ProjectFileOf(firstField)) {
    return {ResolvedPath(StripPath(project), *file), ""};
  }
  return {registered.empty() ? PathFrom(project, named) : registered,
          std::string(GetGUID(firstField))};
}

PointedItem PointedValue(const std::string& value, const ReferenceResolution& references,
                         const std::string& project) {
  PointedItem item;
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    const auto first = on([&] { return ReferenceField(value, 0); });
    const auto version = on([&] { return ReferenceField(value, 1); });
    const auto named = on([&] { return ComponentPath(value); });
    const auto verdict = on([&] { return references.RefType(GetGUID(first), version, named); });
    item = Component(first, named, verdict.registryPath, project);
  });
  return item;
}

}  // namespace

PointedItem PointedNode(const TreeNode& node, const ReferenceResolution& references) {
  const TreeNode* project = ProjectAbove(&node);
  if (project == nullptr) return {};
  const std::string& path = project->Text();
  if (IsReferenceNode(node)) return PointedValue(node.Text(), references, path);
  const bool isFile =
      node.KeyStartsWith(node_prefix::kMember) || node.KeyStartsWith(node_prefix::kUserControl);
  return {isFile ? ResolvedPath(StripPath(path), node.Text()) : path, ""};
}

PointedItem PointedReference(const ListRow& row, const std::string& project) {
  return Component(row.Text(), row.SubItem(reference_column::kComponent),
                   row.SubItem(reference_column::kRegistryPath), project);
}

}  // namespace gorbex
