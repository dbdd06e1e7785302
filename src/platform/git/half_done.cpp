#include "platform/git/half_done.h"

#include <cstddef>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using Paths = std::vector<std::string>;
using PathSet = std::set<std::string, std::less<>>;

std::vector<std::string> WithPaths(std::vector<std::string> arguments, const Paths& paths) {
  arguments.emplace_back("--");
  for (const auto& path : paths) arguments.push_back(LiteralPath(path));
  return arguments;
}

// As many at a time as every system's command line takes.
std::vector<Paths> InParts(const Paths& paths) {
  constexpr std::size_t kLongest = 16'000;
  std::vector<Paths> parts;
  std::size_t length = kLongest;
  for (const auto& path : paths) {
    length += path.size() + 16;
    if (length > kLongest) {
      parts.emplace_back();
      length = path.size() + 16;
    }
    parts.back().push_back(path);
  }
  return parts;
}

PathSet SetOf(const std::string& answer) {
  PathSet paths;
  for (const auto path : Records(answer)) paths.emplace(path);
  return paths;
}

}  // namespace

void HalfDone::TakeBack() const {
  const auto after = ReadStatus(git_);
  if (after.commit != before_.commit) return;
  int attempts = 50;
  for (const auto& part : InParts(Touched(after))) {
    TakeBackOrSplit(part, after.missing, attempts);
  }
}

HalfDone::Paths HalfDone::Touched(const GitStatus& after) const {
  PathSet touched(after.changed.begin(), after.changed.end());
  if (!absent_.empty()) {
    for (const auto& path : OtherFiles(git_)) {
      if (absent_.contains(path)) touched.insert(path);
    }
  }
  for (const auto& path : before_.changed) touched.erase(path);
  return {touched.begin(), touched.end()};
}

// One file that a filter refuses must not keep the others from going back.
void HalfDone::TakeBackOrSplit(const Paths& touched, const std::set<std::string>& missing,
                               int& attempts) const {
  try {
    TakeBackAll(touched, missing);
  } catch (const RuntimeError& failure) {
    if (touched.size() < 2 || --attempts <= 0 || IsLockedOut(failure)) {
      // Files that were added for comparing must not stay added.
      static_cast<void>(git_.Try(GitCall::Change, WithPaths({"reset", "--quiet"}, touched)));
      return;
    }
    const auto middle = touched.begin() + static_cast<std::ptrdiff_t>(touched.size() / 2);
    TakeBackOrSplit({touched.begin(), middle}, missing, attempts);
    TakeBackOrSplit({middle, touched.end()}, missing, attempts);
  }
}

// The index goes back first: it then knows again the files that git removed. What neither it nor
// the working tree knows has gone back already.
HalfDone::Paths HalfDone::WithIndexBack(const Paths& touched) const {
  git_.Run(GitCall::Change, WithPaths({"reset", "--quiet"}, touched));
  const auto known = SetOf(
      git_.Run(GitCall::Question, WithPaths({"ls-files", "--cached", "--others", "-z"}, touched)));
  return {known.begin(), known.end()};
}

// A file is git's own work when it is gone, or holds what the commit holds: either way nothing is
// lost with it. The index has to know a file before it can be compared, or removed.
void HalfDone::TakeBackAll(const Paths& touched, const std::set<std::string>& missing) const {
  const auto left = WithIndexBack(touched);
  if (left.empty()) return;
  git_.Run(GitCall::Change, WithPaths({"add", "--all", "--force"}, left));
  const auto others = SetOf(git_.Run(
      GitCall::Question,
      WithPaths({"diff", "--cached", "--name-only", "-z", "--no-renames", "--no-ext-diff", commit_},
                left)));
  Paths users;
  Paths own;
  for (const auto& path : left) {
    (others.contains(path) && !missing.contains(path) ? users : own).push_back(path);
  }
  if (!users.empty()) git_.Run(GitCall::Change, WithPaths({"reset", "--quiet"}, users));
  PutBack(own);
}

// Added files go first, so that their folder makes room for the file that was there.
void HalfDone::PutBack(const Paths& own) const {
  Paths added;
  Paths replaced;
  for (const auto& path : own) {
    const bool isAdded = !before_.HasCommit() || absent_.contains(path);
    (isAdded ? added : replaced).push_back(path);
  }
  if (!added.empty()) git_.Run(GitCall::Change, WithPaths({"rm", "--quiet", "--force"}, added));
  if (replaced.empty()) return;
  git_.Run(GitCall::Change, WithPaths({"checkout", "--quiet", "--no-overlay", "HEAD"}, replaced));
}

}  // namespace gorbex
