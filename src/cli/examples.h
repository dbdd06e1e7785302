#pragma once

#include <CLI/CLI.hpp>

namespace gorbex::cli {

/// Ends the help of every command with an example, in terms of the sample product.
void AddExamples(CLI::App& app);

}  // namespace gorbex::cli
