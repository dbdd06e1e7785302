#pragma once

#include <string>

#include "core/main_window.h"
#include "core/project_file.h"
#include "core/project_views.h"
#include "core/signal.h"
#include "platform/file_system.h"

namespace gorbex {

/// Loads project files into the build model and the tree.
class ProjectFileReader {
 public:
  ProjectFileReader(frmBuilder& window, const FileReader& files, ProjectViews& views)
      : window_(window), files_(files), views_(views) {}

  /// True when the project is in the model, now or already. False when an error stopped the
  /// reading; then no record was added, and nothing is shown: listeners of `leftOut` are told.
  bool ReadProject(const std::string& path);

  /// A project that could not be read, and why.
  Signal<std::string, std::string> leftOut;

  /// A project that was read but that the compiler will not load, and why.
  Signal<std::string, std::string> doubtful;

 private:
  [[nodiscard]] ProjectFile Read(const std::string& path);
  TreeNode& AddBranch(const ProjectFile& file);
  void AddReferences(TreeNode& heading, std::string_view prefix,
                     const std::vector<std::string>& values, const std::string& path);
  void AddMembers(TreeNode& project, const clsMember& member);
  void AddProperties(TreeNode& project, const ProjectFile& file);
  void StoreRecord(clsMember member);

  frmBuilder& window_;
  const FileReader& files_;
  ProjectViews& views_;
};

}  // namespace gorbex
