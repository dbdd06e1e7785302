#include "platform/git/half_done.h"

#include <cstddef>
#include <utility>

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

// All files that git does not follow, those it ignores too, which no status shows one by one.
PathSet OtherFiles(const GitRunner& git) {
  return SetOf(git.Run(GitCall::Question, {"ls-files", "--others", "-z"}));
}

}  // namespace

HalfDone::HalfDone(const GitRunner& git, std::string commit, const GitStatus& before)
    : git_(git), commit_(std::move(commit)), before_(before) {
  absent_ = AddedFiles();
  if (absent_.empty()) return;
  for (const auto& path : OtherFiles(git_)) absent_.erase(path);
}

void HalfDone::TakeBack() const {
  const auto after = ReadStatus(git_);
  if (after.commit != before_.commit) return;
  int attempts = 50;
  for (const auto& part : InParts(Touched(after))) {
    TakeBackOrSplit(part, after.missing, attempts);
  }
}

HalfDone::PathSet HalfDone::AddedFiles() const {
  if (!before_.HasCommit()) {
    return SetOf(git_.Run(GitCall::Question,
                          {"ls-tree", "-r", "-z", "--name-only", "--full-tree", commit_}));
  }
  return SetOf(git_.Run(GitCall::Question, {"diff-tree", "-r", "-z", "--name-only", "--no-renames",
                                            "--diff-filter=A", before_.commit, commit_}));
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
      // What was added to compare it must not stay added.
      static_cast<void>(git_.Try(GitCall::Change, WithPaths({"reset", "--quiet"}, touched)));
      return;
    }
    const auto middle = touched.begin() + static_cast<std::ptrdiff_t>(touched.size() / 2);
    TakeBackOrSplit({touched.begin(), middle}, missing, attempts);
    TakeBackOrSplit({middle, touched.end()}, missing, attempts);
  }
}

// A file is git's own work when it is gone, or holds what the commit holds: either way nothing is
// lost with it. The index has to know a file before it can be compared, or removed.
void HalfDone::TakeBackAll(const Paths& touched, const std::set<std::string>& missing) const {
  git_.Run(GitCall::Change, WithPaths({"add", "--all", "--force"}, touched));
  const auto others = SetOf(git_.Run(
      GitCall::Question,
      WithPaths({"diff", "--cached", "--name-only", "-z", "--no-renames", "--no-ext-diff", commit_},
                touched)));
  Paths users;
  Paths own;
  for (const auto& path : touched) {
    (others.contains(path) && !missing.contains(path) ? users : own).push_back(path);
  }
  if (!users.empty()) git_.Run(GitCall::Change, WithPaths({"reset", "--quiet"}, users));
  if (!own.empty()) git_.Run(GitCall::Change, WithPaths(WayBack(), own));
}

std::vector<std::string> HalfDone::WayBack() const {
  if (before_.HasCommit()) return {"checkout", "--quiet", "--no-overlay", "HEAD"};
  return {"rm", "--quiet", "--force"};
}

}  // namespace gorbex
