#pragma once

#include <string>
#include <vector>

#include "check/check.h"
#include "platform/file_system.h"

namespace gorbex {

/// The checks that are wanted.
struct CheckSelection {
  std::vector<std::string> only;     ///< ids; empty for all
  std::vector<std::string> ignored;  ///< ids
  bool isQuick = false;              ///< only quick ones

  [[nodiscard]] bool Wants(const Check& check) const;
};

/// The ids that a list of ignored checks holds: one on each line, "#" begins a comment.
struct IgnoredChecks {
  std::vector<std::string> ids;
  std::vector<std::string> problems;  ///< lines that name no check, with the file and their number
};

/// The list in the folder of a build project, in a file named ".gorbexcheck"; empty without one.
[[nodiscard]] IgnoredChecks IgnoredIn(const FileReader& files, const std::string& folder);

/// All checks except those that the list beside a build project ignores. The problem is why the
/// list cannot be read, or its first line that names no check; such a line ignores nothing.
[[nodiscard]] CheckSelection SelectionBeside(const FileReader& files,
                                             const std::string& buildProject,
                                             std::string* problem = nullptr);

}  // namespace gorbex
