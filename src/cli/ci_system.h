#pragma once

#include <functional>
#include <optional>
#include <string>

namespace gorbex::cli {

/// An environment variable by its name; nothing when it is not set.
using Variables = std::function<std::optional<std::string>(const char* name)>;

/// A build server that runs this program and takes commands from its output.
enum class CiSystem { None, GitHub, Azure, TeamCity };

/// The system, by the variables that these systems set.
[[nodiscard]] CiSystem CiSystemOf(const Variables& environment);

/// Whether a terminal should show colours, as its user and its kind have it.
[[nodiscard]] bool WantsColours(const Variables& environment);

}  // namespace gorbex::cli
