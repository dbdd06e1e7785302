#pragma once

#include <set>
#include <string>

#include "platform/git/runner.h"

namespace gorbex {

/// The present checkout and the user's changes in it. Texts are UTF-8.
struct GitStatus {
  std::string commit;  ///< its hash; "(initial)" before the first one
  std::string branch;  ///< "(detached)" when none is checked out
  std::set<std::string> changed;
  std::set<std::string> missing;  ///< of the changed files, those that are gone

  [[nodiscard]] bool HasCommit() const { return commit != "(initial)"; }
};

/// The state of the whole working tree, or of one path in it.
[[nodiscard]] GitStatus ReadStatus(const GitRunner& git, const std::string& path = {});

}  // namespace gorbex
