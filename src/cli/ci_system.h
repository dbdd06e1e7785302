#pragma once

#include <functional>
#include <optional>
#include <string>

namespace gorbex::cli {

/// A build server that runs this program and takes commands from its output.
enum class CiSystem { None, GitHub, Azure, TeamCity };

/// The system, by the variables that these systems set.
[[nodiscard]] CiSystem CiSystemOf(
    const std::function<std::optional<std::string>(const char* name)>& environment);

/// Whether a terminal should show colours, as its user and its kind have it.
[[nodiscard]] bool WantsColours(
    const std::function<std::optional<std::string>(const char* name)>& environment);

}  // namespace gorbex::cli
