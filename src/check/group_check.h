#pragma once

#include "check/check_selection.h"
#include "check/checked_group.h"
#include "check/finding.h"

namespace gorbex {

/// Finds what would make a run of the open build project fail or harm. Changes nothing.
class GroupCheck {
 public:
  explicit GroupCheck(const CheckedGroup::Uses& uses) : uses_(uses) {}

  /// The findings of the wanted checks: errors first, each kind in the order of the table, sorted
  /// by file and line.
  [[nodiscard]] Findings Run(CheckedGroup::Scope scope, const CheckSelection& selection) const;

  /// As Run, for the open build project with its file's own projects.
  [[nodiscard]] Findings RunOpen(const CheckSelection& selection) const;

 private:
  CheckedGroup::Uses uses_;
};

[[nodiscard]] std::size_t ErrorsIn(const Findings& findings);

/// "2 errors, 1 warning" or "No problem found", for a last line or a status bar.
[[nodiscard]] std::string SummaryOf(const Findings& findings);

}  // namespace gorbex
