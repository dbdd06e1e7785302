#pragma once

#include <string_view>
#include <vector>

#include "check/checked_group.h"
#include "check/finding.h"

namespace gorbex {

/// One kind of finding.
struct Check {
  std::string_view id;
  Severity severity;
  std::string_view summary;  ///< for lists of all checks
  std::string_view remedy;

  /// Adds what it finds; the table's own values are filled in afterwards. Changes nothing outside
  /// the program, and raises no error.
  void (*look)(CheckedGroup& group, Findings& found);

  bool isQuick = false;  ///< reads no source and asks the registry nothing
};

/// The errors, then the warnings.
[[nodiscard]] const std::vector<Check>& AllChecks();

/// Null when there is none of that id.
[[nodiscard]] const Check* FindCheck(std::string_view id);

}  // namespace gorbex
