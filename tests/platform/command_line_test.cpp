#include "platform/linux/command_line.h"

#include <gtest/gtest.h>

#include <set>

namespace gorbex {
namespace {

TEST(CommandLine, FindsTheProgramAsTheSystemDoes) {
  const std::set<std::string> files = {"C:\\My Tools\\Run.exe", "C:\\My Tools\\sub dir\\a",
                                       "C:\\My.exe", "tool", "C:\\v1.0\\app.exe"};
  struct Case {
    const char* commandLine;
    const char* program;
    const char* arguments;
  };
  const Case cases[] = {
      {"\"C:\\My Tools\\Run.exe\" /a \"b\"", "C:\\My Tools\\Run.exe", " /a \"b\""},
      {"\"C:\\My Tools\\Run\"x", "C:\\My Tools\\Run.exe", "x"},
      {"\"C:\\My Tools\\Run.exe", "C:\\My Tools\\Run.exe", ""},
      {"C:\\My Tools\\Run.exe /a", "C:\\My.exe", " Tools\\Run.exe /a"},
      {"C:\\My Tools\\sub dir\\a b", "C:\\My.exe", " Tools\\sub dir\\a b"},
      {"C:\\v1.0\\app /x", "C:\\v1.0\\app.exe", " /x"},
      {"  tool\t-v", "tool", "\t-v"},
      {"C:\\My Tools\\none", "C:\\My.exe", " Tools\\none"},
      {"C:\\none here", nullptr, nullptr},
      {"C:\\app.com", nullptr, nullptr},
      {"\"\" x", nullptr, nullptr},
      {"\"", nullptr, nullptr},
      {"   ", nullptr, nullptr},
      {"", nullptr, nullptr},
  };
  const auto isFile = [&](const std::string& name) { return files.contains(name); };
  for (const auto& [commandLine, program, arguments] : cases) {
    const auto found = FindProgram(commandLine, isFile);
    ASSERT_EQ(found.has_value(), program != nullptr) << commandLine;
    if (!found) continue;
    EXPECT_EQ(found->program, program) << commandLine;
    EXPECT_EQ(found->arguments, arguments) << commandLine;
  }
  const auto spaced = FindProgram("C:\\My Tools\\sub dir\\a b", [](const std::string& name) {
    return name == "C:\\My Tools\\sub dir\\a";
  });
  ASSERT_TRUE(spaced);
  EXPECT_EQ(spaced->arguments, " b");
}

TEST(CommandLine, SplitsArgumentsAsTheRunTimeLibraryDoes) {
  struct Case {
    const char* text;
    std::vector<std::string> arguments;
  };
  const Case cases[] = {
      {"", {}},
      {" \t ", {}},
      {"a  b\tc ", {"a", "b", "c"}},
      {"\"a b\" c\"d e\"f", {"a b", "cd ef"}},
      {"\"\" x", {"", "x"}},
      {"a\\\\\\b d\"e f\"g h", {"a\\\\\\b", "de fg", "h"}},
      {"a\\\\\\\"b c d", {"a\\\"b", "c", "d"}},
      {"a\\\\\\\\\"b c\" d e", {"a\\\\b c", "d", "e"}},
      {"\"a\"\"b\" c", {"a\"b", "c"}},
      {"\"C:\\Out\\\\\" /d", {"C:\\Out\\", "/d"}},
      {"\"open end", {"open end"}},
      {"\\", {"\\"}},
  };
  for (const auto& [text, arguments] : cases) EXPECT_EQ(SplitArguments(text), arguments) << text;
}

}  // namespace
}  // namespace gorbex
