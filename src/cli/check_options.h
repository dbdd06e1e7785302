#pragma once

#include <CLI/CLI.hpp>
#include <string>

#include "check/check_selection.h"
#include "cli/session.h"

namespace gorbex::cli {

/// Adds the options that say which checks a command does.
void AddCheckOptions(CLI::App& command, CheckSelection& selection);

/// Failure for an id that no check has.
void RequireKnownIds(const CheckSelection& selection);

/// These, without those that the list in the folder ignores. Failure for a list with a line that
/// names no check.
[[nodiscard]] CheckSelection SelectionOf(Session& session, CheckSelection selection,
                                         const std::string& folder);

}  // namespace gorbex::cli
