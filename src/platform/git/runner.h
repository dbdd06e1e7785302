#pragma once

#include <chrono>
#include <string>
#include <utility>
#include <vector>

#include "platform/git/ask_pass.h"
#include "platform/tool.h"

namespace gorbex {

/// The rights of a call of git.
enum class GitCall {
  Question,  ///< looks at the working tree, taking no lock
  Change,    ///< changes the working tree; the user's hooks run
  Remote,    ///< asks the remote, with the login, which nothing else is shown
};

/// A git that takes longer is ended, for example because a server is silent: an unattended program
/// would wait for it forever.
inline constexpr std::chrono::minutes kGitPatience{30};

/// A variable that git is given, whose value means no further option of a merge.
inline constexpr const char* kNoMergeOptions = "GORBEX_MERGE_OPTIONS";

/// Runs git in one working tree with one login. Arguments and answers are UTF-8.
class GitRunner {
 public:
  GitRunner(ToolRunner& tools, std::string folder, GitLogin login, std::string askPassProgram)
      : tools_(tools),
        folder_(std::move(folder)),
        login_(std::move(login)),
        askPassProgram_(std::move(askPassProgram)) {}

  /// Limits the login to these origins of URLs; before this call it has none.
  void UseLoginAt(std::vector<std::string> origins) { origins_ = std::move(origins); }

  /// Git's answer. Error with git's words when it fails. If another git is at work in the same
  /// place, a few more attempts are made, here and below.
  std::string Run(GitCall kind, const std::vector<std::string>& arguments) const;

  /// Lets the caller judge the exit code. Error only when git cannot be run.
  [[nodiscard]] ToolResult Try(GitCall kind, const std::vector<std::string>& arguments) const;

  [[noreturn]] void Raise(const ToolResult& failure) const;

 private:
  [[nodiscard]] ToolCall CallOf(GitCall kind, const std::vector<std::string>& arguments) const;
  void AddLogin(ToolCall& call) const;

  ToolRunner& tools_;
  std::string folder_;
  GitLogin login_;
  std::string askPassProgram_;
  std::vector<std::string> origins_;
};

/// True when another git held the lock that git takes before it changes anything.
[[nodiscard]] inline bool IsLockedOut(const RuntimeError& failure) {
  return failure.Description().find("index.lock': File exists") != std::string::npos;
}

/// A path in a form that git takes literally, whatever characters it has.
[[nodiscard]] inline std::string LiteralPath(const std::string& path) {
  return ":(literal)" + path;
}

/// The texts of a "-z" answer.
[[nodiscard]] std::vector<std::string_view> Records(std::string_view answer);

/// A one-line answer without its line end.
[[nodiscard]] std::string Line(std::string answer);

}  // namespace gorbex
