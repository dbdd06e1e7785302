#pragma once

#include <functional>
#include <optional>
#include <string>

namespace gorbex::cli {

/// The build server that runs this program, as far as it takes commands from a program's output.
enum class CiSystem { None, GitHub, Azure, TeamCity };

/// By the variables that these systems set.
[[nodiscard]] CiSystem CiSystemOf(
    const std::function<std::optional<std::string>(const char* name)>& environment);

/// Whether a terminal should show colours, as its user and its kind have it.
[[nodiscard]] bool WantsColours(
    const std::function<std::optional<std::string>(const char* name)>& environment);

}  // namespace gorbex::cli
