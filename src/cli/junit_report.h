#pragma once

#include <string>

#include "core/run_record.h"

namespace gorbex::cli {

/// A build run as a JUnit report (XML, UTF-8): one test case for each checked project, and one with
/// an error for a run that ended early.
[[nodiscard]] std::string JUnitReport(const RunRecord& record, const std::string& title);

}  // namespace gorbex::cli
