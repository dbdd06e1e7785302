#pragma once

#include <CLI/CLI.hpp>
#include <optional>
#include <string>
#include <vector>

#include "cli/session.h"

namespace gorbex::cli {

/// What is to be built and how, for one run only.
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

/// Joins them to a command that builds, or plans a build, as the verb says.
void AddRunOptions(CLI::App& command, RunOptions& options, const std::string& verb);

/// Lets them override the settings of the open build project, and checks the rows that are meant.
/// Failure for one that cannot be used.
void UseRunOptions(Session& session, const RunOptions& options);

}  // namespace gorbex::cli
