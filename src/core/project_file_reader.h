#pragma once

#include <optional>
#include <string>
#include <vector>

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

  /// As ReadProject(), but references stay unmarked and the project is not shown: for many projects
  /// in a row, whose branches are collected for ShowLast() and for marking.
  bool ReadUnmarked(const std::string& path, std::vector<ProjectBranch>& branches);

  /// Shows the last project of those read and selects it; nothing when there is none.
  void ShowLast(const std::vector<ProjectBranch>& branches);

  /// A project that could not be read, and why.
  Signal<std::string, std::string> leftOut;

  /// A project that was read but that the compiler will not load, and why.
  Signal<std::string, std::string> doubtful;

 private:
  [[nodiscard]] ProjectFile Read(const std::string& path);
  [[nodiscard]] std::optional<clsMember> ReadBranch(const std::string& path, ProjectBranch& branch);
  void Show(TreeNode& project);
  void AddBranch(ProjectFile& file, ProjectBranch& branch);
  void StoreRecord(clsMember member);

  frmBuilder& window_;
  const FileReader& files_;
  ProjectViews& views_;
};

}  // namespace gorbex
