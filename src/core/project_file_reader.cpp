#include "core/project_file_reader.h"

#include <utility>

#include "core/file_tools.h"
#include "core/node_key.h"
#include "core/procedure.h"
#include "core/reference_value.h"

namespace gorbex {

bool ProjectFileReader::ReadProject(const std::string& path) {
  if (window_.ProjectMembers.Contains(path)) return true;
  TreeNode* project = nullptr;
  try {
    ProjectFile file = Read(path);
    project = &AddBranch(file);
    StoreRecord(std::move(file.member));
  } catch (const RuntimeError& error) {
    leftOut.Emit(path, error.Description());
    return false;
  }
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { views_.ShowProjectReferences(path); });
    on([&] { views_.ShowProjectDetails(*project); });
    on([&] { window_.tvwProjects.Select(project); });
  });
  return true;
}

ProjectFile ProjectFileReader::Read(const std::string& path) {
  const std::string text = files_.Read(path);
  if (const auto problem = ProjectFileProblem(text)) doubtful.Emit(path, *problem);
  ProjectFile file = ParseProjectFile(path, text);
  const std::string binding = path.substr(0, path.rfind('\\') + 1) + "mssccprj.scc";
  if (FileExists(files_, binding)) file.member.VSSProject = BoundProject(files_.Read(binding));
  return file;
}

TreeNode& ProjectFileReader::AddBranch(const ProjectFile& file) {
  TreeView& tree = window_.tvwProjects;
  const clsMember& member = file.member;
  const std::string& path = member.path;
  TreeNode& project =
      tree.Add(&tree.Item(kRootKey), NodeKey(node_prefix::kProject, path), path, Image::VbProject);
  TreeNode& references =
      tree.Add(&project, NodeKey(node_prefix::kReferences, path), "References", Image::VbReference);
  AddReferences(references, node_prefix::kReference, member.Refs, path);
  TreeNode& objects =
      tree.Add(&project, NodeKey(node_prefix::kObjects, path), "Objects", Image::VbReference);
  AddReferences(objects, node_prefix::kObject, member.Objects, path);
  AddMembers(project, member);
  AddProperties(project, file);
  return project;
}

void ProjectFileReader::AddReferences(TreeNode& heading, std::string_view prefix,
                                      const std::vector<std::string>& values,
                                      const std::string& path) {
  std::size_t number = 0;
  for (const std::string& value : values) {
    TreeNode& node = window_.tvwProjects.Add(&heading, ItemKey(prefix, ++number, path), value,
                                             Image::VbReference);
    node.SetTag(std::string(GetGUID(value)));
    views_.MarkReferenceNode(node);
  }
}

void ProjectFileReader::AddMembers(TreeNode& project, const clsMember& member) {
  TreeView& tree = window_.tvwProjects;
  const std::string& path = member.path;
  TreeNode& heading =
      tree.Add(&project, NodeKey(node_prefix::kMembers, path), "Members", Image::VbForm);
  std::size_t number = 0;
  for (const std::string& file : member.Members) {
    tree.Add(&heading, ItemKey(node_prefix::kMember, ++number, path), file, Image::VbForm);
  }
  number = 0;
  for (const std::string& file : member.UserControls) {
    tree.Add(&heading, ItemKey(node_prefix::kUserControl, ++number, path), file, Image::VbClass);
  }
}

void ProjectFileReader::AddProperties(TreeNode& project, const ProjectFile& file) {
  TreeView& tree = window_.tvwProjects;
  const std::string& path = file.member.path;
  TreeNode& heading = tree.Add(&project, NodeKey(node_prefix::kProperties, path),
                               "Project Properties", Image::Notepad);
  std::size_t number = 0;
  for (const std::string& line : file.properties) {
    tree.Add(&heading, ItemKey(node_prefix::kProperty, ++number, path), line, Image::Notepad);
  }
}

void ProjectFileReader::StoreRecord(clsMember member) {
  if (window_.ProjectMembers.Contains(member.path)) window_.ProjectMembers.Remove(member.path);
  window_.ProjectMembers.Add(std::move(member));
}

}  // namespace gorbex
