#pragma once

#include <string>

namespace CLI {
class App;
}

namespace gorbex::cli {

/// Adds an option that names a file to write. Projects, sources, components and registries are
/// refused before the command does anything: a slip of the keyboard must not replace one.
void AddOutput(CLI::App& command, const std::string& name, std::string& file,
               const std::string& description);

}  // namespace gorbex::cli
