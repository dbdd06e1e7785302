#include "core/project_file_reader.h"

#include <algorithm>
#include <utility>

#include "core/file_tools.h"
#include "core/node_key.h"
#include "core/procedure.h"
#include "core/reference_value.h"

namespace gorbex {

bool ProjectFileReader::ReadProject(const std::string& path) {
  if (window_.ProjectMembers.Contains(path)) return true;
  ProjectBranch branch;
  auto record = ReadBranch(path, branch);
  views_.MarkBranch(branch);
  if (!record) return false;
  StoreRecord(std::move(*record));
  Show(*branch.project);
  return true;
}

bool ProjectFileReader::ReadUnmarked(const std::string& path,
                                     std::vector<ProjectBranch>& branches) {
  if (window_.ProjectMembers.Contains(path)) return true;
  auto record = ReadBranch(path, branches.emplace_back());
  if (!record) return false;
  StoreRecord(std::move(*record));
  return true;
}

// What was added before an error stays in the tree.
std::optional<clsMember> ProjectFileReader::ReadBranch(const std::string& path,
                                                       ProjectBranch& branch) {
  branch.earlierRecords = window_.ProjectMembers.Count();
  std::optional<clsMember> record;
  try {
    ProjectFile file = Read(path);
    AddBranch(file, branch);
    branch.isRead = true;
    record = std::move(file.member);
  } catch (const RuntimeError& error) {
    leftOut.Emit(path, error.Description());
  }
  return record;
}

void ProjectFileReader::ShowLast(const std::vector<ProjectBranch>& branches) {
  const auto last = std::find_if(branches.rbegin(), branches.rend(),
                                 [](const auto& branch) { return branch.isRead; });
  if (last != branches.rend()) Show(*last->project);
}

void ProjectFileReader::Show(TreeNode& project) {
  Procedure::IgnoringErrors().Run([&](Procedure& on) {
    on([&] { views_.ShowProjectReferences(project.Text()); });
    on([&] { views_.ShowProjectDetails(project); });
    on([&] { window_.tvwProjects.Select(&project); });
  });
}

ProjectFile ProjectFileReader::Read(const std::string& path) {
  const std::string text = files_.Read(path);
  if (const auto problem = ProjectFileProblem(text)) doubtful.Emit(path, *problem);
  ProjectFile file = ParseProjectFile(path, text);
  const std::string binding = path.substr(0, path.rfind('\\') + 1) + "mssccprj.scc";
  if (FileExists(files_, binding)) file.member.VSSProject = BoundProject(files_.Read(binding));
  return file;
}

void ProjectFileReader::AddBranch(ProjectFile& file, ProjectBranch& branch) {
  TreeView& tree = window_.tvwProjects;
  const clsMember& member = file.member;
  const std::string& path = member.path;
  branch.project =
      &tree.Add(&tree.Item(kRootKey), NodeKey(node_prefix::kProject, path), path, Image::VbProject);
  const auto heading = [&](std::string_view prefix, const char* text, Image image) -> TreeNode& {
    return tree.Add(branch.project, NodeKey(prefix, path), text, image);
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
}

void ProjectFileReader::StoreRecord(clsMember member) {
  if (window_.ProjectMembers.Contains(member.path)) window_.ProjectMembers.Remove(member.path);
  window_.ProjectMembers.Add(std::move(member));
}

}  // namespace gorbex
