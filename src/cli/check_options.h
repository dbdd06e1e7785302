#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "check/check_selection.h"
#include "cli/session.h"

namespace gorbex::cli {

/// The checks that a command does.
struct CheckOptions {
  std::vector<std::string> only;
  std::vector<std::string> ignored;
};

void AddCheckOptions(CLI::App& command, CheckOptions& options);

/// Failure for an id that no check has.
void RequireKnownIds(const CheckOptions& options);

/// These, without those that the list in the folder ignores. Failure for a list with a line that
/// names no check.
[[nodiscard]] CheckSelection SelectionOf(Session& session, const CheckOptions& options,
                                         const std::string& folder);

}  // namespace gorbex::cli
