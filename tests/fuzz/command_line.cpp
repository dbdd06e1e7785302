#include "platform/command_line.h"

#include <algorithm>

#include "core/text.h"
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
  const auto commandLine = input.substr(0, 4096);
  for (const std::size_t length : {std::size_t{0}, std::size_t{5}, commandLine.size()}) {
    RequireProgram(commandLine, length);
  }
  static_cast<void>(ProgramText(commandLine));
}

}  // namespace gorbex::test
