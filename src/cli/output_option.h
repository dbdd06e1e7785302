#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "cli/session.h"

namespace gorbex::cli {

/// Adds an option that names a file to write. Projects, sources, components and registries are
/// refused before the command does anything: a slip of the keyboard must not replace one. So is an
/// empty name, such as one of a variable that is not set.
void AddOutput(CLI::App& command, const std::string& name, std::string& file,
               const std::string& description);

/// Failure when two outputs of a command would be written to one file. Empty ones are not written.
void RequireOwnFiles(const Session& session, const std::vector<std::string>& typed);

}  // namespace gorbex::cli
