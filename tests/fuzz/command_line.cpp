#include "platform/command_line.h"

#include <algorithm>

#include "build/program_argument.h"
#include "core/text.h"
#include "platform/runtime_error.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

// A program may be any of the texts up to a blank; the one that exists is of this length.
void RequireProgram(std::string_view commandLine, std::size_t length) {
  std::size_t asked = 0;
  const auto found = FindProgram(commandLine, [&](const std::string& candidate) {
    ++asked;
    return candidate.size() == length;
  });
  const auto blanks = std::count_if(commandLine.begin(), commandLine.end(),
                                    [](char c) { return c == ' ' || c == '\t'; });
  Require(asked <= 2 * (static_cast<std::size_t>(blanks) + 1), "each candidate is tried twice");
  if (!found) return;
  Require(found->program.size() == length, "a program is one that exists");
  Require(commandLine.ends_with(found->arguments), "arguments are the rest of the command line");
}

// A path of a file that a command line may contain is one argument there.
void RequireOneArgument(const std::string& path) {
  try {
    RequireFileArgument(path);
  } catch (const RuntimeError&) {
    return;
  }
  const std::vector<std::string> wanted = {path, "/make"};
  Require(SplitArguments(" \"" + path + "\" /make") == wanted, "a path is one argument");
  Require(SplitFolderArguments(" \"" + path + "\" /make") == wanted, "in every way");
  Require(!path.starts_with('-') && !path.starts_with('/'), "a path is no option");
}

}  // namespace

// A command line, whose lines are arguments of another.
void ReadInput(std::string_view input) {
  for (const auto& arguments : {SplitArguments(input), [&] {
                                  std::vector<std::string> lines;
                                  for (const auto line : Split(input, '\n'))
                                    lines.emplace_back(line);
                                  return lines;
                                }()}) {
    Require(SplitArguments(JoinArguments(arguments)) == arguments,
            "arguments that were joined are split again");
  }
  RequireOneArgument(std::string(input));
  const auto commandLine = input.substr(0, 4096);
  for (const std::size_t length : {std::size_t{0}, std::size_t{5}, commandLine.size()}) {
    RequireProgram(commandLine, length);
  }
  static_cast<void>(ProgramText(commandLine));
}

}  // namespace gorbex::test
