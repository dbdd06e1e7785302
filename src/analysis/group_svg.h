#pragma once

#include <string>
#include <vector>

#include "analysis/group_layout.h"
#include "analysis/project_state.h"
#include "core/member.h"

namespace gorbex {

/// The projects by their numbers in the graph; the name of one without a name is that of its file.
[[nodiscard]] std::vector<PictureProject> PictureProjectsOf(const MemberCollection& members);

/// The caption of a group's picture: its size and, in a large group, the number of lines left out.
/// Such as "12 projects in 3 levels, 20 lines. Each project is to the right of those that it uses."
[[nodiscard]] std::string PictureSummary(const GroupLayout& layout);

/// The picture as an SVG document (UTF-8), which can also be put into an HTML page: its styles
/// touch nothing else there. The states are by the project's number, or empty when nothing is known
/// of them; then the picture has no colours for them.
[[nodiscard]] std::string GroupSvg(const GroupLayout& layout,
                                   const std::vector<PictureProject>& projects,
                                   const std::string& title,
                                   const std::vector<ProjectState>& states = {});

}  // namespace gorbex
