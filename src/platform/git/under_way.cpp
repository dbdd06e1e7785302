#include "platform/git/under_way.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

#include "platform/code_page.h"
#include "platform/git/words.h"
#include "platform/header_fields.h"

namespace gorbex {
namespace {

struct Trace {
  const char* file;  ///< in git's own folder while the operation lasts
  const char* operation;
};

constexpr std::array kTraces = {
    Trace{"MERGE_HEAD", "merge"},    Trace{"CHERRY_PICK_HEAD", "cherry-pick"},
    Trace{"REVERT_HEAD", "revert"},  Trace{"sequencer/todo", "cherry-pick or revert"},
    Trace{"rebase-merge", "rebase"}, Trace{"rebase-apply/applying", "mailbox import"},
    Trace{"rebase-apply", "rebase"}, Trace{"BISECT_LOG", "bisection"},
};

// A path of git's is relative to the folder it ran in, or the host's, whose root is drive Z.
std::string WindowsPath(const std::string& folder, std::string path) {
  const bool isAbsolute = path.starts_with("//") || (path.size() > 1 && path[1] == ':');
  if (path.starts_with('/') && !isAbsolute) {
    path.insert(0, "Z:");
  } else if (!isAbsolute) {
    path.insert(0, folder + "\\");
  }
  std::replace(path.begin(), path.end(), '/', '\\');
  return path;
}

}  // namespace

void RequireNothingUnderWay(const GitRunner& git, const FileReader& files,
                            const std::string& folder) {
  std::vector<std::string> arguments = {"rev-parse"};
  for (const auto& trace : kTraces) arguments.insert(arguments.end(), {"--git-path", trace.file});
  const auto answer = git.Run(GitCall::Question, arguments);
  std::string_view rest = answer;
  for (const auto& trace : kTraces) {
    const auto line = TakeLine(rest);
    if (line.empty() || !files.Look(WindowsPath(folder, FromUtf8Roughly(line)))) continue;
    Refuse("A " + std::string(trace.operation) + " is under way in '" + folder +
           "'; finish it or give it up first");
  }
}

}  // namespace gorbex
