#pragma once

#include <functional>
#include <set>
#include <string>

#include "platform/git/runner.h"
#include "platform/git/status.h"

namespace gorbex {

/// The changes in the working tree on the way to a commit, as found before git begins.
struct Incoming {
  using Paths = std::set<std::string, std::less<>>;

  Paths absent{};      ///< files that the commit adds, where there is nothing yet
  Paths inTheWay{};    ///< files and links of the user's in place of a folder that files change in
  Paths submodules{};  ///< those that should be at another commit, which git leaves to the user
};

[[nodiscard]] Incoming ReadIncoming(const GitRunner& git, const std::string& commit,
                                    const GitStatus& before);

/// Error that names the first file in the way of a folder: git would replace it without asking.
void RequireFreeWay(const Incoming& incoming);

/// All files that git does not follow, those it ignores too, which no status shows one by one.
[[nodiscard]] Incoming::Paths OtherFiles(const GitRunner& git);

}  // namespace gorbex
