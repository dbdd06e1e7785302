#include "platform/git/status.h"

namespace gorbex {
namespace {

constexpr std::string_view kCommit = "# branch.oid ";
constexpr std::string_view kBranch = "# branch.head ";

// The number of fields before the path in a line of each kind.
int FieldsBeforePath(char kind) {
  switch (kind) {
    case '1':
      return 8;
    case 'u':
      return 10;
    case '?':
      return 1;
    default:
      return 0;
  }
}

// From the answer of "status --porcelain=v2 --branch -z".
GitStatus ParseStatus(std::string_view answer) {
  GitStatus status;
  for (const auto record : Records(answer)) {
    if (record.starts_with(kCommit)) status.commit = record.substr(kCommit.size());
    if (record.starts_with(kBranch)) status.branch = record.substr(kBranch.size());
    const int fields = record.empty() ? 0 : FieldsBeforePath(record.front());
    std::size_t start = 0;
    for (int i = 0; i < fields && start != std::string_view::npos; ++i) {
      start = record.find(' ', start);
      if (start != std::string_view::npos) ++start;
    }
    if (fields == 0 || start == std::string_view::npos) continue;
    const std::string path(record.substr(start));
    status.changed.insert(path);
    if (record.front() == '1' && record.substr(3, 1) == "D") status.missing.insert(path);
  }
  return status;
}

}  // namespace

GitStatus ReadStatus(const GitRunner& git, const std::string& path) {
  std::vector<std::string> arguments = {
      "status",       "--porcelain=v2",           "--branch", "-z", "--untracked-files=all",
      "--no-renames", "--ignore-submodules=dirty"};
  if (!path.empty()) arguments.insert(arguments.end(), {"--", LiteralPath(path)});
  return ParseStatus(git.Run(GitCall::Question, arguments));
}

}  // namespace gorbex
