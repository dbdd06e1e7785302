#include <gtest/gtest.h>

#include <filesystem>
#include <thread>

#include "system_bench.h"

namespace gorbex::test {
namespace {

using namespace std::chrono_literals;

struct ChildProcesses : testing::Test {
  std::uint32_t Run(const std::string& arguments) {
    return CodeOf(bench.launcher, "\"" + WindowsPath(CHILD_STARTER) + "\" " + arguments);
  }

  ProcessesOnSystem bench;
};

TEST_F(ChildProcesses, EndWithAProgramThatIsKilledUnlessTheyMayOutliveIt) {
  const auto ticks = bench.folder.Path() / "ticks";
  for (const bool lives : {false, true}) {
    std::filesystem::remove(ticks);
    const auto child = "\"\\\"" + WindowsPath(CHATTY_TOOL) + "\\\" tick\"";
    EXPECT_EQ(Run((lives ? "leave " : "die ") + child), 9U);
    const auto before = std::filesystem::file_size(ticks);
    std::this_thread::sleep_for(300ms);
    EXPECT_EQ(std::filesystem::file_size(ticks) > before, lives);
  }
}

TEST_F(ChildProcesses, GetNothingOfAConsole) {
  EXPECT_EQ(Run("console"), 3U);
}

TEST_F(ChildProcesses, AreNotGivenLibrariesThatSomebodyPutBesideThem) {
  const auto place = bench.folder.Path() / "child_starter.exe";
  std::filesystem::copy_file(CHILD_STARTER, place);
  std::filesystem::copy_file(AUTOMATION_SERVERS, bench.folder.Path() / "planted.dll");
  std::filesystem::create_directory(bench.folder.Path() / "elsewhere");
  const CurrentFolder inside(bench.folder.Path() / "elsewhere");
  EXPECT_EQ(CodeOf(bench.launcher, "\"" + WindowsPath(place) + "\" search"), 3U);
}

}  // namespace
}  // namespace gorbex::test
