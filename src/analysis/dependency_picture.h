#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "analysis/group_dependency.h"
#include "analysis/group_layout.h"
#include "analysis/group_svg.h"
#include "analysis/project_display.h"
#include "analysis/project_search.h"
#include "analysis/project_state.h"
#include "core/dependencies_form.h"
#include "core/main_window.h"
#include "core/run_events.h"

namespace gorbex {

/// The picture of the dependencies: where each project is, its state, and which one is selected,
/// here and in the main window alike. A change of the group or of states is taken when a front end
/// calls CatchUp().
class DependencyPicture {
 public:
  /// Every project of the queue, and whether it needs a build now.
  using Judge = std::function<std::vector<std::pair<std::string, bool>>()>;

  /// All must outlive the picture.
  DependencyPicture(frmDependencies& form, frmBuilder& window, const GroupDependency& group,
                    ProjectDisplay& display, RunEvents& runs, Signal<CompileEnded>& compiles,
                    Judge judge);
  DependencyPicture(const DependencyPicture&) = delete;
  DependencyPicture& operator=(const DependencyPicture&) = delete;

  void mnuWindowDependencies_Click();

  /// Lays the group out again, as its projects are now.
  void Refresh();

  /// Takes all changes over if the form is visible. To be called when the program is idle.
  void CatchUp();

  [[nodiscard]] const GroupLayout& Layout() const { return layout_; }

  /// Projects and states by the project's number.
  [[nodiscard]] const std::vector<PictureProject>& Projects() const { return projects_; }
  [[nodiscard]] ProjectState StateOf(std::size_t project) const { return states_[project]; }

  /// Lines about a project (UTF-8) that a front end shows on request.
  [[nodiscard]] std::string NoteOf(std::size_t project) const;

  /// The project whose box is at a point of the picture.
  [[nodiscard]] std::optional<std::size_t> At(const PicturePoint& point) const;

  [[nodiscard]] std::optional<std::size_t> Selected() const { return selected_; }

  /// Selects a project here, in the tree and in the queue.
  void Select(std::size_t project);

  enum class Way { ToUsed, ToUser, Up, Down };

  /// Selects the nearest project that the selected one uses, or that uses it, or its neighbour in
  /// the level; the first one when none is selected.
  void Step(Way way);

  /// Selects a project by its name or path, from left to right and from top to bottom.
  SearchHit Find(std::string_view wanted, SearchDirection direction);

  Signal<> laidOut;   ///< everything has changed
  Signal<> restated;  ///< states, or the selection, have changed

 private:
  void Follow(RunEvents& runs, Signal<CompileEnded>& compiles);
  void Hear(const RunEvent& event);
  void Tell(const std::string& path, ProjectState state);
  void ShowOutdated();
  void TakeStates();
  void TakeSelection();
  void FillList();
  void Order();
  [[nodiscard]] ProjectState StateNow(const std::string& path) const;
  [[nodiscard]] std::string DetailsOf(std::size_t project) const;
  [[nodiscard]] std::string Names(const std::vector<std::size_t>& projects) const;
  [[nodiscard]] std::optional<std::size_t> Nearest(const std::vector<std::size_t>& projects) const;
  [[nodiscard]] std::optional<std::size_t> Neighbour(std::size_t project, bool isBelow) const;

  frmDependencies& form_;
  frmBuilder& window_;
  const GroupDependency& group_;
  ProjectDisplay& display_;
  Judge judge_;
  GroupLayout layout_;
  std::vector<PictureProject> projects_;
  std::vector<std::string> paths_;  ///< as the program has them
  std::unordered_map<std::string, std::size_t> numbers_;
  std::vector<std::vector<std::size_t>> uses_;
  std::vector<std::vector<std::size_t>> users_;
  std::vector<std::size_t> order_;  ///< from left to right, from top to bottom
  std::vector<ProjectState> states_;
  std::unordered_map<std::string, ProjectState> told_;  ///< by runs and by the look
  std::optional<std::size_t> selected_;
  bool isStale_ = true;     ///< which projects there are, or their uses, may have changed
  bool isRestated_ = true;  ///< states may have changed
  Subscriptions subscriptions_;
};

}  // namespace gorbex
