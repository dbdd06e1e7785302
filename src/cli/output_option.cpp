#include "cli/output_option.h"

#include <CLI/CLI.hpp>

#include "core/source_name.h"

namespace gorbex::cli {

void AddOutput(CLI::App& command, const std::string& name, std::string& file,
               const std::string& description) {
  command.add_option(name, file, description)->check([](const std::string& typed) {
    return IsOutputName(typed)
               ? std::string()
               : typed + " is a project, a source or a component; it is not replaced";
  });
}

}  // namespace gorbex::cli
