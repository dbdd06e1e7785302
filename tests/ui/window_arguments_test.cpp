#include "ui/window_arguments.h"

#include <gtest/gtest.h>

namespace gorbex::ui {
namespace {

TEST(WindowArguments, NameOneFileAndAPrefixWhereThereIsOne) {
  using Words = std::vector<std::string>;
  constexpr int kGoesOn = -1;
  struct Case {
    Words words;
    PrefixOption option;
    int exitStatus;
    std::string typed;
    std::string prefix;
  };
  const Case cases[] = {
      {{}, PrefixOption::None, kGoesOn, "", ""},
      {{"a.bpf"}, PrefixOption::None, kGoesOn, "a.bpf", ""},
      {{"a.bpf", "b.bpf"}, PrefixOption::None, 2, "", ""},
      {{"a.bpf", "--version"}, PrefixOption::None, 0, "", ""},
      {{"/help"}, PrefixOption::None, kGoesOn, "/help", ""},
      {{"--prefix", "p", "show"}, PrefixOption::Offered, kGoesOn, "show", "p"},
      {{"--prefix=p"}, PrefixOption::Offered, kGoesOn, "", "p"},
      {{"--prefix="}, PrefixOption::Offered, 2, "", ""},
      {{"--prefix"}, PrefixOption::Offered, 2, "", ""},
      {{"--prefix", "p"}, PrefixOption::None, 2, "", ""},
  };
  for (const auto& [words, option, exitStatus, typed, prefix] : cases) {
    const auto arguments = WindowArgumentsOf(words, option);
    const std::string first = words.empty() ? "" : words.front();
    EXPECT_EQ(arguments.reply ? arguments.reply->exitStatus : kGoesOn, exitStatus) << first;
    if (arguments.reply) continue;
    EXPECT_EQ(arguments.typed, typed) << first;
    EXPECT_EQ(arguments.prefix.value_or(""), prefix) << first;
  }
}

}  // namespace
}  // namespace gorbex::ui
