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
  /// Of a project that is up to date: the projects it uses that the run builds before it. Should
  /// one of them get another interface, this one is built, too.
  std::vector<std::string> unless;
};

/// What a run would do, in its order, and why.
struct BuildPlan {
  std::vector<PlannedProject> projects;
  std::size_t toBuild = 0;
  std::size_t upToDate = 0;
  /// The sum of the last durations of what is to be built; nothing when none of them is known.
  std::optional<std::chrono::milliseconds> estimate;
};

/// The plan of a run over the checked rows of the queue. Changes nothing.
[[nodiscard]] BuildPlan PlanOf(const frmBuilder& window, const GroupDependency& group,
                               Freshness& freshness);

}  // namespace gorbex
