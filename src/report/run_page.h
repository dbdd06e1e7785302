#pragma once

#include <string>

#include "report/run_report.h"

namespace gorbex {

/// A report as a page for browsers (HTML in UTF-8) that needs nothing else: no script, no font and
/// no picture from elsewhere. Whatever is drawn is in a table, too.
[[nodiscard]] std::string RunPage(const RunReport& report);

}  // namespace gorbex
