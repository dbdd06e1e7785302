#pragma once

#include <string>

#include "report/run_report.h"

namespace gorbex {

/// A report as a page for browsers (HTML in UTF-8) that needs no script, and no font or picture
/// from elsewhere. Everything drawn is also in a table.
[[nodiscard]] std::string RunPage(const RunReport& report);

}  // namespace gorbex
