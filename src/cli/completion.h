#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace gorbex::cli {

/// A script that makes the shell complete the program's command line, with the commands, options
/// and kinds of values that the definition has.
[[nodiscard]] std::string BashCompletion(const CLI::App& app);
[[nodiscard]] std::string ZshCompletion(const CLI::App& app);

}  // namespace gorbex::cli
