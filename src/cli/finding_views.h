#pragma once

#include "check/finding.h"
#include "cli/json_views.h"
#include "cli/session.h"

namespace gorbex::cli {

/// A line for each finding, in the form that editors and terminals recognise as a place in a file,
/// and a last line with the numbers.
void PrintFindings(const Session& session, std::ostream& out, const Findings& findings);

[[nodiscard]] Json FindingsJson(const Findings& findings);

/// As a report that code hosts show in a review (SARIF 2.1.0).
[[nodiscard]] Json FindingsSarif(const Host& host, const Findings& findings);

/// Gives the findings to the build server that runs this program, if any.
void AnnotateFindings(const Session& session, const Findings& findings);

}  // namespace gorbex::cli
