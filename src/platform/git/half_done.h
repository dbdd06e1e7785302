#pragma once

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/git/incoming.h"
#include "platform/git/runner.h"
#include "platform/git/status.h"

namespace gorbex {

/// The traces that git leaves in the working tree when it stops on its way to a commit.
class HalfDone {
 public:
  /// The status is that before git sets out; absent are the files that the commit adds in places
  /// where nothing was there then. Runner and status outlive this.
  HalfDone(const GitRunner& git, std::string commit, const GitStatus& before,
           Incoming::Paths absent)
      : git_(git), commit_(std::move(commit)), before_(before), absent_(std::move(absent)) {}

  /// Brings back every file that git touched, and no file that the user changed. A file stays as
  /// git left it when a filter of git fails for it. Error with git's words when the state is
  /// unknown.
  void TakeBack() const;

 private:
  using Paths = std::vector<std::string>;

  [[nodiscard]] Paths Touched(const GitStatus& after) const;
  void TakeBackOrSplit(const Paths& touched, const std::set<std::string>& missing,
                       int& attempts) const;
  [[nodiscard]] Paths WithIndexBack(const Paths& touched) const;
  void TakeBackAll(const Paths& touched, const std::set<std::string>& missing) const;
  void PutBack(const Paths& own) const;

  const GitRunner& git_;
  std::string commit_;
  const GitStatus& before_;
  Incoming::Paths absent_;
};

}  // namespace gorbex
