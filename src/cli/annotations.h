#pragma once

#include "check/finding.h"
#include "cli/frame.h"

namespace gorbex::cli {

/// Gives a finding to the build server that runs this program, if any, to show beside the file. Its
/// text is UTF-8 and its file one of the host.
void Annotate(const Frame& frame, const Finding& finding);

}  // namespace gorbex::cli
