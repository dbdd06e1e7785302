#include "compiler/command_line.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "platform/code_page.h"

namespace gorbex::standin {
namespace {

struct Switch {
  std::string_view name;
  std::optional<Task> task;
  std::string CommandLine::*value;  ///< where the next argument goes; null when none follows
};

constexpr std::array kSwitches = {
    Switch{"/d", {}, &CommandLine::constants},    Switch{"/make", Task::Make, nullptr},
    Switch{"/out", {}, &CommandLine::resultLog},  Switch{"/outdir", {}, &CommandLine::outputFolder},
    Switch{"/regserver", Task::Install, nullptr}, Switch{"/run", Task::Run, nullptr},
};

class Parser {
 public:
  std::variant<CommandLine, UsageError> Parse(const std::vector<std::string>& arguments) {
    for (std::size_t i = 0; i < arguments.size() && error_.empty();) {
      i += arguments[i].starts_with('/') ? TakeSwitch(arguments, i) : TakeProject(arguments[i]);
    }
    if (error_.empty()) CheckWhole();
    if (!error_.empty()) return UsageError{error_};
    return line_;
  }

 private:
  std::size_t TakeSwitch(const std::vector<std::string>& arguments, std::size_t at) {
    const auto* const found = std::find_if(
        kSwitches.begin(), kSwitches.end(),
        [&](const Switch& candidate) { return EqualsIgnoringCase(candidate.name, arguments[at]); });
    if (found == kSwitches.end()) return Fail("Unknown switch: " + arguments[at]);
    if (found->task) TakeTask(*found->task);
    if (found->value == nullptr) return 1;
    if (at + 1 == arguments.size() || arguments[at + 1].starts_with('/')) {
      return Fail("A value is missing after " + arguments[at]);
    }
    line_.*found->value = arguments[at + 1];
    return 2;
  }

  std::size_t TakeProject(const std::string& argument) {
    if (!line_.project.empty()) return Fail("More than one project: " + argument);
    line_.project = argument;
    return 1;
  }

  void TakeTask(Task task) {
    if (task_ && *task_ != task) Fail("More than one task");
    task_ = line_.task = task;
  }

  void CheckWhole() {
    if (!task_) {
      Fail("Nothing to do: /make, /run or /regserver is missing");
    } else if (*task_ != Task::Install && line_.project.empty()) {
      Fail("The project is missing");
    } else if (*task_ == Task::Make && line_.resultLog.empty()) {
      Fail("The result log (/out FILE) is missing");
    }
  }

  std::size_t Fail(const std::string& message) {
    if (error_.empty()) error_ = message;
    return 1;
  }

  CommandLine line_;
  std::optional<Task> task_;
  std::string error_;
};

}  // namespace

std::variant<CommandLine, UsageError> ParseCommandLine(const std::vector<std::string>& arguments) {
  return Parser().Parse(arguments);
}

}  // namespace gorbex::standin
