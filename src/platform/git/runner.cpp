#include "platform/git/runner.h"

#include <algorithm>

#include "platform/git/words.h"

namespace gorbex {
namespace {

using Variables = std::map<std::string, std::optional<std::string>>;

// A program started from a hook inherits variables that would lead git to another repository, and
// a few change what its answers mean.
Variables Environment() {
  Variables variables = {{"GIT_TERMINAL_PROMPT", "0"}, {"LC_ALL", "C"}};
  for (const char* name : {"GIT_ALTERNATE_OBJECT_DIRECTORIES", "GIT_COMMON_DIR", "GIT_DIR",
                           "GIT_GLOB_PATHSPECS", "GIT_ICASE_PATHSPECS", "GIT_INDEX_FILE",
                           "GIT_LITERAL_PATHSPECS", "GIT_NAMESPACE", "GIT_NOGLOB_PATHSPECS",
                           "GIT_OBJECT_DIRECTORY", "GIT_PREFIX", "GIT_WORK_TREE", "LANGUAGE"}) {
    variables[name] = std::nullopt;
  }
  return variables;
}

std::vector<std::string> Options(GitCall kind) {
  std::vector<std::string> options;
  if (kind == GitCall::Question) options.emplace_back("--no-optional-locks");
  options.insert(options.end(), {"-c", "core.quotePath=false", "-c", "i18n.commitEncoding=UTF-8"});
  return options;
}

[[noreturn]] void RaiseNotRun(const RuntimeError& error) {
  if (error.Code() != ErrorNumber::FileNotFound) throw error;
  throw RuntimeError::WithDescription(error.Code(),
                                      "git is not installed: there is no program 'git'");
}

}  // namespace

ToolResult GitRunner::Try(GitCall kind, const std::vector<std::string>& arguments) const {
  ToolCall call{"git", Options(kind), folder_, Environment()};
  if (AnswersForUser(kind)) {
    // A helper would keep what was typed.
    call.arguments.insert(call.arguments.end(), {"-c", "credential.helper="});
    call.environment.merge(AskPassEnvironment(askPassProgram_, login_, hosts_));
  }
  call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
  auto outcome = tools_.Run(call);
  if (const auto* error = std::get_if<RuntimeError>(&outcome)) RaiseNotRun(*error);
  return std::move(std::get<ToolResult>(outcome));
}

std::string GitRunner::Run(GitCall kind, const std::vector<std::string>& arguments) const {
  auto result = Try(kind, arguments);
  if (result.exitCode != 0) Raise(result);
  return std::move(result.output);
}

void GitRunner::Raise(const ToolResult& failure) const {
  throw RuntimeError::WithDescription(ErrorNumber::AutomationError,
                                      WordsOf(failure, login_.password));
}

std::vector<std::string_view> Records(std::string_view answer) {
  std::vector<std::string_view> records;
  while (!answer.empty()) {
    records.push_back(answer.substr(0, answer.find('\0')));
    answer.remove_prefix(std::min(records.back().size() + 1, answer.size()));
  }
  return records;
}

std::string Line(std::string answer) {
  while (answer.ends_with('\n') || answer.ends_with('\r')) answer.pop_back();
  return answer;
}

}  // namespace gorbex
