#pragma once

#include <string>

#include "cli/json_views.h"
#include "core/run_record.h"

namespace gorbex::cli {

/// A run with its registration script as JSON.
[[nodiscard]] Json RunJson(const RunRecord& record, const std::string& script);

/// Tells a record what the JSON of another run says of its projects. False when the text is not
/// such JSON.
bool TakeRunJson(RunRecord& record, const std::string& text);

}  // namespace gorbex::cli
