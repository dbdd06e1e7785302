#pragma once

#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "analysis/group_dependency.h"
#include "core/main_window.h"
#include "freshness/freshness.h"

namespace gorbex {

struct PlannedProject {
  std::string path;
  Judgement judgement;

  /// The projects whose new interfaces decide: it uses them, and they are, or may be, built before
  /// it. If it is up to date, it is built only when one of their interfaces changes; if it is to be
  /// built, it is skipped when their interfaces stay the same.
  std::vector<std::string> decidedBy{};

  [[nodiscard]] bool MayBeSkipped() const { return !judgement.IsUpToDate() && !decidedBy.empty(); }
  [[nodiscard]] bool MayBeBuilt() const { return !judgement.IsUpToDate() || !decidedBy.empty(); }
};

/// The projects that a run would take, in its order, and its judgement of each.
struct BuildPlan {
  std::vector<PlannedProject> projects;
  std::size_t toBuild = 0;
  std::size_t mayBeSkipped = 0;  ///< of those that are to be built
  std::size_t upToDate = 0;
  std::size_t mayBeBuilt = 0;  ///< of those that are up to date
  /// The sum of the last durations of the projects to build; nothing when none is known.
  std::optional<std::chrono::milliseconds> estimate;
};

enum class PlannedRows { Checked, All };

/// The plan of a run over rows of the queue. Changes nothing.
[[nodiscard]] BuildPlan PlanOf(const frmBuilder& window, const GroupDependency& group,
                               Freshness& freshness, PlannedRows rows = PlannedRows::Checked);

/// Such as ", unless another interface comes of Core.vbp"; empty when no other project decides.
[[nodiscard]] std::string UnlessText(const PlannedProject& project);

/// Such as "3 to build (1 may be skipped), 2 up to date (1 may be built)".
[[nodiscard]] std::string CountsText(const BuildPlan& plan);

}  // namespace gorbex
