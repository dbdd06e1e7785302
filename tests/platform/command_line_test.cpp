#include "platform/command_line.h"

#include <gtest/gtest.h>

#include <set>

namespace gorbex {
namespace {

TEST(CommandLine, FindsTheProgramAsTheSystemDoes) {
  const std::set<std::string> files = {"C:\\My Tools\\Run.exe", "C:\\Sub Dir\\My Own\\a",
                                       "C:\\My.exe", "tool", "C:\\v1.0\\app.exe"};
  const std::pair<const char*, const char*> cases[] = {
      {"\"C:\\My Tools\\Run.exe\" /a \"b\"", "C:\\My Tools\\Run.exe> /a \"b\""},
      {"\"C:\\My Tools\\Run\"x", "C:\\My Tools\\Run.exe>x"},
      {"\"C:\\My Tools\\Run.exe", "C:\\My Tools\\Run.exe>"},
      {"C:\\My Tools\\Run.exe /a", "C:\\My.exe> Tools\\Run.exe /a"},
      {"C:\\Sub Dir\\My Own\\a b", "C:\\Sub Dir\\My Own\\a> b"},
      {"C:\\v1.0\\app /x", "C:\\v1.0\\app.exe> /x"},
      {"  tool\t-v", "tool>\t-v"}};
  const auto isFile = [&](const std::string& name) { return files.contains(name); };
  for (const auto& [commandLine, outcome] : cases) {
    const auto found = FindProgram(commandLine, isFile);
    ASSERT_TRUE(found) << commandLine;
    EXPECT_EQ(found->program + ">" + std::string(found->arguments), outcome) << commandLine;
  }
  for (const char* bad : {"C:\\none here", "C:\\app.com", "\"\" x", "\"", "   ", ""}) {
    EXPECT_FALSE(FindProgram(bad, isFile)) << bad;
  }
}

TEST(CommandLine, SplitsArgumentsAsTheRunTimeLibraryDoes) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
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
      {"\"\\\\\\\" \\\\\"", {"\\\" \\"}},
  };
  for (const auto& [text, arguments] : cases) {
    EXPECT_EQ(SplitArguments(text), arguments) << text;
    EXPECT_EQ(SplitArguments(JoinArguments(arguments)), arguments) << text;
  }
}

TEST(CommandLine, KeepsTheBackslashAtTheEndOfAQuotedFolder) {
  const std::pair<const char*, std::vector<std::string>> cases[] = {
      {"/outdir \"C:\\My Out\\\"", {"/outdir", "C:\\My Out\\"}},
      {"\"C:\\Out\\\" /make \"C:\\Out\\\"", {"C:\\Out\\", "/make", "C:\\Out\\"}},
      {"\"C:\\Out\\\\\" x", {"C:\\Out\\", "x"}},
      {"C:\\Out\\ x\\\"y", {"C:\\Out\\", "x\"y"}},
      {"\"a\\\"b\" c", {"a\"b", "c"}}};
  for (const auto& [text, arguments] : cases) {
    EXPECT_EQ(SplitFolderArguments(text), arguments) << text;
  }
}

}  // namespace
}  // namespace gorbex
