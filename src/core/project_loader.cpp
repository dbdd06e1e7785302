#include "core/project_loader.h"

#include <utility>

#include "core/node_key.h"
#include "core/procedure.h"
#include "core/reference_value.h"

namespace gorbex {

bool ProjectLoader::ReadProject(const std::string& path) {
  if (window_.ProjectMembers.Contains(path)) return true;
  TreeNode* project = Read(path, Marking::AtOnce);
  if (project == nullptr) return false;
  Show(*project);
  return true;
}

TreeNode* ProjectLoader::ReadUnmarked(const std::string& path) {
  return window_.ProjectMembers.Contains(path) ? nullptr : Read(path, Marking::Later);
}

// Nodes that were added before an error stay in the tree.
TreeNode* ProjectLoader::Read(const std::string& path, Marking marking) {
  try {
    ProjectFile file = ReadFile(path);
    TreeNode& project = AddBranch(file);
    if (marking == Marking::AtOnce) views_.MarkProject(project);
    window_.ProjectMembers.Add(std::move(file.member));
    return &project;
  } catch (const RuntimeError& error) {
    leftOut.Emit(path, error.Description());
    return nullptr;
  }
}

void ProjectLoader::Show(TreeNode& project) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { views_.ShowProjectReferences(project.Text()); });
    on([&] { views_.ShowProjectDetails(project); });
    on([&] { window_.tvwProjects.Select(&project); });
  });
}

ProjectFile ProjectLoader::ReadFile(const std::string& path) {
  const std::string text = files_.Read(path);
  if (const auto problem = ProjectFileProblem(text)) doubtful.Emit(path, *problem);
  ProjectFile file = ParseProjectFile(path, text);
  const std::string binding = path.substr(0, path.rfind('\\') + 1) + "mssccprj.scc";
  if (FileExists(files_, binding)) file.member.VSSProject = BoundProject(files_.Read(binding));
  return file;
}

TreeNode& ProjectLoader::AddBranch(ProjectFile& file) {
  TreeView& tree = window_.tvwProjects;
  const clsMember& member = file.member;
  const std::string& path = member.path;
  TreeNode& project =
      tree.Add(&tree.Item(kRootKey), NodeKey(node_prefix::kProject, path), path, Image::VbProject);
  const auto heading = [&](std::string_view prefix, const char* text, Image image) -> TreeNode& {
    return tree.Add(&project, NodeKey(prefix, path), text, image);
  };
  TreeNode& references = heading(node_prefix::kReferences, "References", Image::VbReference);
  tree.AddRows(references, node_prefix::kReference, member.Refs, Image::VbReference, GetGUID);
  TreeNode& objects = heading(node_prefix::kObjects, "Objects", Image::VbReference);
  tree.AddRows(objects, node_prefix::kObject, member.Objects, Image::VbReference, GetGUID);
  TreeNode& members = heading(node_prefix::kMembers, "Members", Image::VbForm);
  tree.AddRows(members, node_prefix::kMember, member.Members, Image::VbForm);
  tree.AddRows(members, node_prefix::kUserControl, member.UserControls, Image::VbClass);
  TreeNode& properties = heading(node_prefix::kProperties, "Project Properties", Image::Notepad);
  tree.AddRows(properties, node_prefix::kProperty, std::move(file.properties), Image::Notepad);
  return project;
}

}  // namespace gorbex
