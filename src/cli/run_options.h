#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/session.h"

namespace gorbex::cli {

/// The projects to build and the settings, for one run only.
struct RunOptions {
  std::vector<std::string> projects;
  bool all = false;  ///< every row of the queue
  bool debug = false;
  bool breakCompat = false;
  bool changeRefs = false;
  std::string version;
  std::string buildFolder;
  std::string compiler;
  std::optional<int> jobs;
};

/// Adds the options to a command that builds, or plans a build, as the verb says.
void AddRunOptions(CLI::App& command, RunOptions& options, const std::string& verb);

/// Overrides the settings of the open build project with the options, and checks the rows to build.
/// Failure for an option that cannot be used.
void UseRunOptions(Session& session, const RunOptions& options);

}  // namespace gorbex::cli
