#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "analysis/group_dependency.h"
#include "core/member.h"

namespace gorbex {

/// For each project of a run the numbers of those that it uses: directly, or through projects that
/// the run does not build. Empty for a path that is not loaded.
[[nodiscard]] std::vector<std::vector<std::size_t>> UsesInRun(
    const MemberCollection& members, const GroupDependency& group,
    const std::vector<std::string>& paths);

/// The same without circles: the projects of a circle use one another in the order of their
/// numbers, and a project that uses one of them uses the last.
[[nodiscard]] std::vector<std::vector<std::size_t>> WithoutCircles(
    std::vector<std::vector<std::size_t>> uses);

}  // namespace gorbex
