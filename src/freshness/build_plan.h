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

  /// The projects it uses that are, or may be, built before it and whose interfaces decide: one
  /// that is up to date is built when another interface comes of them, one that is to be built is
  /// skipped when the same comes of them.
  std::vector<std::string> decidedBy{};

  [[nodiscard]] bool MayBeSkipped() const { return !judgement.IsUpToDate() && !decidedBy.empty(); }
  [[nodiscard]] bool MayBeBuilt() const { return !judgement.IsUpToDate() || !decidedBy.empty(); }
};

/// What a run would do, in its order, and why.
struct BuildPlan {
  std::vector<PlannedProject> projects;
  std::size_t toBuild = 0;
  std::size_t mayBeSkipped = 0;  ///< of those that are to be built
  std::size_t upToDate = 0;
  std::size_t mayBeBuilt = 0;  ///< of those that are up to date
  /// The sum of the last durations of what is to be built; nothing when none of them is known.
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
