#pragma once

#include <iosfwd>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "app/program.h"
#include "cli/frame.h"

namespace gorbex::cli {

using Json = nlohmann::ordered_json;

/// A text of the program as JSON.
[[nodiscard]] Json JsonText(std::string_view text);

[[nodiscard]] Json JsonTexts(const std::vector<std::string>& texts);

/// JSON as a text. Every control character is escaped, also those that JSON would let through to
/// the user's terminal.
[[nodiscard]] std::string Written(const Json& json);

/// Prints it on one line of the output.
void PrintJson(const Frame& frame, const Json& json);

/// The rows of the queue, and those of the detail list.
[[nodiscard]] Json QueueJson(const ListView& queue);
[[nodiscard]] Json ReferencesJson(const ListView& references);

/// Everything `show` tells, written piece by piece: a big group is never in memory twice.
void WriteShowJson(std::ostream& out, const Program& program);

}  // namespace gorbex::cli
