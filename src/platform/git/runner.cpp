#include "platform/git/runner.h"

#include <array>
#include <thread>

#include "platform/git/words.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

// A program started from a hook inherits variables that would lead git to another repository, a
// few change what its answers mean, and a trace may show what is secret.
constexpr std::array kTakenAway = {"GIT_ALTERNATE_OBJECT_DIRECTORIES",
                                   "GIT_COMMON_DIR",
                                   "GIT_CONFIG",
                                   "GIT_CURL_VERBOSE",
                                   "GIT_DIR",
                                   "GIT_GLOB_PATHSPECS",
                                   "GIT_GRAFT_FILE",
                                   "GIT_ICASE_PATHSPECS",
                                   "GIT_IMPLICIT_WORK_TREE",
                                   "GIT_INDEX_FILE",
                                   "GIT_INTERNAL_SUPER_PREFIX",
                                   "GIT_LITERAL_PATHSPECS",
                                   "GIT_NAMESPACE",
                                   "GIT_NOGLOB_PATHSPECS",
                                   "GIT_NO_REPLACE_OBJECTS",
                                   "GIT_OBJECT_DIRECTORY",
                                   "GIT_PREFIX",
                                   "GIT_QUARANTINE_PATH",
                                   "GIT_REPLACE_REF_BASE",
                                   "GIT_SHALLOW_FILE",
                                   "GIT_TRACE",
                                   "GIT_TRACE2",
                                   "GIT_TRACE2_ENV_VARS",
                                   "GIT_TRACE2_EVENT",
                                   "GIT_TRACE2_PERF",
                                   "GIT_TRACE_CURL",
                                   "GIT_TRACE_CURL_NO_DATA",
                                   "GIT_TRACE_FSMONITOR",
                                   "GIT_TRACE_PACKET",
                                   "GIT_TRACE_PACKFILE",
                                   "GIT_TRACE_PACK_ACCESS",
                                   "GIT_TRACE_PERFORMANCE",
                                   "GIT_TRACE_REDACT",
                                   "GIT_TRACE_REFS",
                                   "GIT_TRACE_SETUP",
                                   "GIT_TRACE_SHALLOW",
                                   "GIT_WORK_TREE",
                                   "LANGUAGE"};

// Neither git nor the ssh it starts waits for somebody to answer: the user's own program for git's
// questions is switched off, and ssh's go to a program that refuses them all.
std::map<std::string, std::optional<std::string>> Environment() {
  std::map<std::string, std::optional<std::string>> variables = {
      {kNoMergeOptions, "--ff-only"}, {"GIT_ASKPASS", std::nullopt},
      {"GIT_TERMINAL_PROMPT", "0"},   {"LC_ALL", "C"},
      {"SSH_ASKPASS", "false"},       {"SSH_ASKPASS_REQUIRE", "force"}};
  for (const char* name : kTakenAway) variables[name] = std::nullopt;
  return variables;
}

// A file is changed by other contents, not by its permission to run.
std::vector<std::string> Options(GitCall kind) {
  std::vector<std::string> options;
  if (kind == GitCall::Question) options.emplace_back("--no-optional-locks");
  options.insert(options.end(), {"-c", "core.quotePath=false", "-c", "core.fileMode=false", "-c",
                                 "core.askPass=", "-c", "i18n.commitEncoding=UTF-8"});
  return options;
}

// Another git holds a lock, or moved the same reference first. Either lasts a moment.
bool IsInAnothersWay(const ToolResult& result) {
  const auto says = [&](const char* words) {
    return result.errorOutput.find(words) != std::string::npos;
  };
  return result.exitCode != 0 &&
         (says(".lock': File exists") || (says("cannot lock ref") && says("but expected")));
}

[[noreturn]] void RaiseNotRun(const RuntimeError& error) {
  if (error.Code() != ErrorNumber::FileNotFound) throw error;
  throw RuntimeError::WithDescription(error.Code(),
                                      "git is not installed: there is no program 'git'");
}

}  // namespace

// A user without a password leaves it to git's helpers, which would keep one that was typed.
void GitRunner::AddLogin(ToolCall& call) const {
  if (login_.password.empty()) {
    call.arguments.insert(call.arguments.end(), {"-c", "credential.username=" + login_.user});
  } else if (!origins_.empty()) {
    call.arguments.insert(call.arguments.end(), {"-c", "credential.helper="});
    for (auto& [name, value] : AskPassEnvironment(askPassProgram_, login_, origins_)) {
      call.environment[name] = value;
    }
  }
}

ToolCall GitRunner::CallOf(GitCall kind, const std::vector<std::string>& arguments) const {
  ToolCall call{"git", Options(kind), folder_, Environment()};
  call.patience = kGitPatience;
  if (kind == GitCall::Remote && !login_.IsEmpty()) AddLogin(call);
  call.arguments.insert(call.arguments.end(), arguments.begin(), arguments.end());
  return call;
}

ToolResult GitRunner::Try(GitCall kind, const std::vector<std::string>& arguments) const {
  constexpr auto kLongestPause = 1600ms;
  const auto call = CallOf(kind, arguments);
  for (auto pause = 50ms;; pause *= 2) {
    auto outcome = tools_.Run(call);
    if (const auto* error = std::get_if<RuntimeError>(&outcome)) RaiseNotRun(*error);
    auto& result = std::get<ToolResult>(outcome);
    if (!IsInAnothersWay(result) || pause > kLongestPause) return std::move(result);
    std::this_thread::sleep_for(pause);
  }
}

std::string GitRunner::Run(GitCall kind, const std::vector<std::string>& arguments) const {
  auto result = Try(kind, arguments);
  if (result.exitCode != 0) Raise(result);
  return std::move(result.output);
}

void GitRunner::Raise(const ToolResult& failure) const {
  Refuse(WordsOf(failure, login_.password));
}

std::vector<std::string_view> Records(std::string_view answer) {
  auto records = Split(answer, '\0');
  if (answer.ends_with('\0')) records.pop_back();
  return records;
}

std::string Line(std::string answer) {
  while (answer.ends_with('\n') || answer.ends_with('\r')) answer.pop_back();
  return answer;
}

}  // namespace gorbex
