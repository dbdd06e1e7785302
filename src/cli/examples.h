#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace gorbex::cli {

/// Ends the help of every command below with an example, in terms of the sample product. The path
/// is the names of the commands above them.
void AddExamples(CLI::App& app, const std::string& path = "");

}  // namespace gorbex::cli
