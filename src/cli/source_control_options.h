#pragma once

#include <CLI/CLI.hpp>

#include <optional>
#include <string>

#include "cli/session.h"

namespace gorbex::cli {

/// The options of a command that uses source control: where the database is, and who logs in.
struct SourceControlOptions {
  std::string ini;
  std::optional<std::string> user;

  [[nodiscard]] bool IsAny() const { return !ini.empty() || user; }
};

void AddSourceControlOptions(CLI::App& command, SourceControlOptions& options);

/// Uses them instead of the stored ones, until the program ends. Failure when there is no such
/// initialisation file.
void UseSourceControl(Session& session, const SourceControlOptions& options);

/// Failure when no initialisation file is known, and nobody is there to name one.
void RequireInitialisationFile(Session& session);

/// A typed text in the program's code page. Failure when that cannot hold it.
[[nodiscard]] std::string InCodePage(const std::string& utf8);

}  // namespace gorbex::cli
