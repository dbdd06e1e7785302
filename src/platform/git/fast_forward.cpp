#include "platform/git/fast_forward.h"

#include <set>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

using Paths = std::vector<std::string>;

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

// A file is git's own work when it is gone, or holds what the commit holds: either way nothing is
// lost with it. The index has to know a file before it can be compared, or removed.
void TakeBack(const GitRunner& git, const std::string& commit, const Paths& touched,
              const std::set<std::string>& missing) {
  git.Run(GitCall::Change, WithPaths({"add", "--all"}, touched));
  const auto answer = git.Run(
      GitCall::Question,
      WithPaths({"diff", "--cached", "--name-only", "-z", "--no-renames", "--no-ext-diff", commit},
                touched));
  std::set<std::string, std::less<>> others;
  for (const auto path : Records(answer)) others.emplace(path);
  Paths users;
  Paths own;
  for (const auto& path : touched) {
    (others.contains(path) && !missing.contains(path) ? users : own).push_back(path);
  }
  if (!users.empty()) git.Run(GitCall::Change, WithPaths({"reset", "--quiet"}, users));
  if (own.empty()) return;
  git.Run(GitCall::Remote, WithPaths({"checkout", "--quiet", "--no-overlay", "HEAD"}, own));
}

void TakeBackHalfDone(const GitRunner& git, const std::string& commit, const GitStatus& before) {
  const auto after = ReadStatus(git);
  if (after.commit != before.commit) return;
  Paths touched;
  for (const auto& path : after.changed) {
    if (!before.changed.contains(path)) touched.push_back(path);
  }
  for (const auto& part : InParts(touched)) TakeBack(git, commit, part, after.missing);
}

}  // namespace

void FastForward(const GitRunner& git, const std::string& commit, const GitStatus& before) {
  // What the user's configuration may add would stash changes away or overwrite ignored files.
  const auto merged =
      git.Try(GitCall::Remote,
              {"-c", "branch." + before.branch + ".mergeOptions=", "merge", "--quiet", "--ff-only",
               "--no-squash", "--no-autostash", "--no-overwrite-ignore", commit});
  if (merged.exitCode == 0) return;
  try {
    TakeBackHalfDone(git, commit, before);
  } catch (const RuntimeError&) {
    // The first failure tells the user more.
  }
  git.Raise(merged);
}

}  // namespace gorbex
