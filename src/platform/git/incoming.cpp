#include "platform/git/incoming.h"

#include "platform/code_page.h"
#include "platform/git/words.h"

namespace gorbex {
namespace {

constexpr std::string_view kSubmodule = "160000";  // as a file's mode

struct Written {
  Incoming::Paths added;
  Incoming::Paths submodules;
  Incoming::Paths folders;  ///< on the way to any file
};

void AddFolders(Incoming::Paths& folders, std::string_view path) {
  for (auto end = path.rfind('/'); end != std::string_view::npos; end = path.rfind('/')) {
    path = path.substr(0, end);
    if (!folders.emplace(path).second) return;
  }
}

// ":MODE MODE HASH HASH LETTER" of each change, then its path.
Written WrittenFrom(const GitRunner& git, const std::string& start, const std::string& commit) {
  const auto answer =
      git.Run(GitCall::Question, {"diff-tree", "-r", "-z", "--raw", "--no-renames", start, commit});
  const auto records = Records(answer);
  Written written;
  for (std::size_t i = 1; i < records.size(); i += 2) {
    constexpr std::size_t kNewMode = sizeof(":100644 ") - 1;
    if (records[i - 1].ends_with('A')) written.added.emplace(records[i]);
    if (records[i - 1].substr(kNewMode).starts_with(kSubmodule)) {
      written.submodules.emplace(records[i]);
    }
    AddFolders(written.folders, records[i]);
  }
  return written;
}

Written WrittenFromNothing(const GitRunner& git, const std::string& commit) {
  const auto answer = git.Run(GitCall::Question, {"ls-tree", "-r", "-z", "--full-tree", commit});
  Written written;
  for (const auto record : Records(answer)) {
    const auto path = record.substr(record.find('\t') + 1);
    if (record.starts_with(kSubmodule)) written.submodules.emplace(path);
    written.added.emplace(path);
    AddFolders(written.folders, path);
  }
  return written;
}

}  // namespace

// Git itself looks after the files that it follows.
Incoming ReadIncoming(const GitRunner& git, const std::string& commit, const GitStatus& before) {
  auto written = before.HasCommit() ? WrittenFrom(git, before.commit, commit)
                                    : WrittenFromNothing(git, commit);
  Incoming incoming{std::move(written.added), {}, std::move(written.submodules)};
  if (incoming.absent.empty() && written.folders.empty()) return incoming;
  for (const auto& path : OtherFiles(git)) {
    incoming.absent.erase(path);
    if (written.folders.contains(path)) incoming.inTheWay.insert(path);
  }
  return incoming;
}

void RequireFreeWay(const Incoming& incoming) {
  if (incoming.inTheWay.empty()) return;
  Refuse("'" + FromUtf8Roughly(*incoming.inTheWay.begin()) +
         "' in the working copy is a link or a file of "
         "your own where the database has a folder; move it away first");
}

Incoming::Paths OtherFiles(const GitRunner& git) {
  const auto answer = git.Run(GitCall::Question, {"ls-files", "--others", "-z"});
  Incoming::Paths paths;
  for (const auto path : Records(answer)) paths.emplace(path);
  return paths;
}

}  // namespace gorbex
