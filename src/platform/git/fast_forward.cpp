#include "platform/git/fast_forward.h"

#include <vector>

#include "platform/git/half_done.h"
#include "platform/git/words.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

// What the user's configuration may add would stash changes away or overwrite ignored files. A
// merge into a branch without commits overwrites those whatever it is told, so there the branch is
// made at the commit instead.
std::vector<std::string> WayTo(const std::string& commit, const GitStatus& before) {
  if (!before.HasCommit()) {
    return {"checkout", "--quiet", "--no-overwrite-ignore", "--no-track", "-b", before.branch,
            commit,     "--"};
  }
  return {"-c",
          "branch." + before.branch + ".mergeOptions=",
          "merge",
          "--quiet",
          "--ff-only",
          "--no-squash",
          "--no-autostash",
          "--no-overwrite-ignore",
          commit};
}

bool IsReached(const GitRunner& git, const std::string& commit) {
  const auto held = git.Try(GitCall::Question, {"merge-base", "--is-ancestor", commit, "HEAD"});
  return held.exitCode == 0;
}

}  // namespace

void FastForward(const GitRunner& git, const std::string& tip, const GitStatus& before) {
  const auto commit =
      Line(git.Run(GitCall::Question, {"rev-parse", "--verify", "--quiet", tip + "^{commit}"}));
  if (commit == before.commit) return;
  const HalfDone halfDone(git, commit, before);
  try {
    git.Run(GitCall::Change, WayTo(commit, before));
  } catch (const RuntimeError& failure) {
    // What looks half-done then is another's work.
    if (IsLockedOut(failure)) throw;
    // Another git brought the branch there while this one looked at it.
    if (IsReached(git, commit)) return;
    try {
      halfDone.TakeBack();
    } catch (const RuntimeError&) {
      // The first failure tells the user more.
    }
    throw;
  }
  if (IsReached(git, commit)) return;
  throw RuntimeError::WithDescription(
      ErrorNumber::AutomationError,
      "The branch '" + FromGit(before.branch) +
          "' was not brought up to date: a hook or a setting of git's kept it from the commit " +
          commit);
}

}  // namespace gorbex
