#pragma once

#include <functional>
#include <set>
#include <string>
#include <vector>

#include "platform/git/runner.h"
#include "platform/git/status.h"

namespace gorbex {

/// What git leaves half-done in the working tree when it stops on its way to a commit.
class HalfDone {
 public:
  /// Looks at the working tree as it is before git sets out. Runner and status outlive this.
  HalfDone(const GitRunner& git, std::string commit, const GitStatus& before);

  /// Brings back every file that git touched, and none that the user did. One that cannot be
  /// brought back, since a filter of git's fails for it, stays as git left it. Error with git's
  /// words when nothing can be told.
  void TakeBack() const;

 private:
  using Paths = std::vector<std::string>;
  using PathSet = std::set<std::string, std::less<>>;

  [[nodiscard]] PathSet AddedFiles() const;
  [[nodiscard]] Paths Touched(const GitStatus& after) const;
  void TakeBackOrSplit(const Paths& touched, const std::set<std::string>& missing,
                       int& attempts) const;
  void TakeBackAll(const Paths& touched, const std::set<std::string>& missing) const;
  [[nodiscard]] std::vector<std::string> WayBack() const;

  const GitRunner& git_;
  std::string commit_;
  const GitStatus& before_;
  PathSet absent_;  ///< files that the commit adds, where nothing stood before
};

}  // namespace gorbex
