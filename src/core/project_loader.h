#pragma once

#include <string>

#include "core/main_window.h"
#include "core/project_file.h"
#include "core/project_views.h"
#include "core/signal.h"
#include "platform/file_system.h"

namespace gorbex {

/// Loads project files into the build model and the tree.
class ProjectLoader {
 public:
  ProjectLoader(frmBuilder& window, const FileReader& files, ProjectViews& views)
      : window_(window), files_(files), views_(views) {}

  /// True when the project is in the model now. False when an error stopped the reading: then no
  /// record is added, nothing is shown, and listeners of `leftOut` are told.
  bool ReadProject(const std::string& path);

  /// As ReadProject(), but nothing is marked or shown. The project's node; null when the project
  /// was in the model already or could not be read.
  TreeNode* ReadUnmarked(const std::string& path);

  /// Shows a project's references and details, and selects it.
  void Show(TreeNode& project);

  /// A project that could not be read, and why.
  Signal<std::string, std::string> leftOut;

  /// A project that was read but that the compiler will not load, and why.
  Signal<std::string, std::string> doubtful;

 private:
  enum class Marking { AtOnce, Later };

  [[nodiscard]] TreeNode* Read(const std::string& path, Marking marking);
  [[nodiscard]] ProjectFile ReadFile(const std::string& path);
  TreeNode& AddBranch(ProjectFile& file);

  frmBuilder& window_;
  const FileReader& files_;
  ProjectViews& views_;
};

}  // namespace gorbex
