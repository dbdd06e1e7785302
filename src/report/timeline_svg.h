#pragma once

#include <string>

#include "build/run_timeline.h"
#include "core/run_record.h"
#include "report/run_words.h"

namespace gorbex {

/// The bars of a run as a picture to be put into a page (SVG in UTF-8), as wide as the page allows.
/// Its colours are the page's classes: the names of states with "-" for blanks, "critical", "lane"
/// and "axis".
[[nodiscard]] std::string TimelineSvg(const RunRecord& record, const RunTimeline& timeline);

/// The page's class for a result, such as "up-to-date".
[[nodiscard]] std::string ClassOf(ProjectResult result);

}  // namespace gorbex
