#pragma once

#include <string>
#include <string_view>

#include "analysis/project_display.h"
#include "analysis/search_hits.h"
#include "core/main_window.h"

namespace gorbex {

/// Finds projects by name, path or binary, and references by GUID, component or description, in any
/// letter case.
class ProjectSearch {
 public:
  using Direction = SearchDirection;
  using Hit = SearchHit;

  ProjectSearch(frmBuilder& window, ProjectDisplay& display) : window_(window), display_(display) {}

  // Both select the next hit after the selection, or the one before it. After the last hit comes
  // the first. An empty text is never found.

  /// In the tree: projects and references. Shows the details of the hit's project.
  Hit FindNode(std::string_view wanted, Direction direction);

  /// In the queue: its projects.
  Hit FindRow(std::string_view wanted, Direction direction);

 private:
  [[nodiscard]] bool IsWanted(const std::string& path, std::string_view wanted) const;
  [[nodiscard]] bool MayHaveReference(const TreeNode& project, std::string_view wanted) const;

  frmBuilder& window_;
  ProjectDisplay& display_;
};

}  // namespace gorbex
