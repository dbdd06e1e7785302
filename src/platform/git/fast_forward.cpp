#include "platform/git/fast_forward.h"

#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/git/half_done.h"
#include "platform/git/words.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

// The key of a setting ends at the first "=", unless its value is in a variable.
std::vector<std::string> WithoutMergeOptions(const std::string& key) {
  if (key.find('=') == std::string::npos) return {"-c", key + "="};
  return {"--config-env=" + key + "=" + kNoMergeOptions};
}

// Options from the user's configuration could stash changes away or overwrite ignored files. A
// merge into a branch without commits overwrites those in any case, so there the branch is
// made at the commit instead.
std::vector<std::string> WayTo(const std::string& commit, const GitStatus& before) {
  if (!before.HasCommit()) {
    return {"checkout", "--quiet", "--no-overwrite-ignore", "--no-track", "-b", before.branch,
            commit,     "--"};
  }
  auto way = WithoutMergeOptions("branch." + before.branch + ".mergeOptions");
  way.insert(way.end(), {"merge", "--quiet", "--ff-only", "--no-squash", "--no-autostash",
                         "--no-overwrite-ignore", commit});
  return way;
}

bool IsReached(const GitRunner& git, const std::string& commit) {
  const auto held = git.Try(GitCall::Question, {"merge-base", "--is-ancestor", commit, "HEAD"});
  return held.exitCode == 0;
}

}  // namespace

Incoming::Paths FastForward(const GitRunner& git, const std::string& tip, const GitStatus& before) {
  const auto commit =
      Line(git.Run(GitCall::Question, {"rev-parse", "--verify", "--quiet", tip + "^{commit}"}));
  if (commit == before.commit) return {};
  auto incoming = ReadIncoming(git, commit, before);
  RequireFreeWay(incoming);
  const HalfDone halfDone(git, commit, before, std::move(incoming.absent));
  try {
    git.Run(GitCall::Change, WayTo(commit, before));
  } catch (const RuntimeError& failure) {
    // Half-done work is then somebody else's.
    if (IsLockedOut(failure)) throw;
    // Another git brought the branch there while this one looked at it.
    if (IsReached(git, commit)) return incoming.submodules;
    try {
      halfDone.TakeBack();
    } catch (const RuntimeError&) {
      // The first failure tells the user more.
    }
    throw;
  }
  if (IsReached(git, commit)) return incoming.submodules;
  Refuse("The branch '" + FromUtf8Roughly(before.branch) +
         "' was not brought up to date: a hook or a setting of git's kept it from the commit " +
         commit);
}

}  // namespace gorbex
