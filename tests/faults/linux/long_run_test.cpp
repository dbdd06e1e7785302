#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "app/program.h"
#include "platform/linux/file_system.h"
#include "platform/linux/process.h"
#include "platform/linux/registry.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

constexpr int kBuilds = 10'000;

/// What this process holds of the system.
struct Held {
  std::size_t kilobytes = 0;
  std::ptrdiff_t handles = 0;
};

Held HeldNow() {
  Held held;
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    if (word == "VmRSS:") status >> held.kilobytes;
  }
  held.handles = std::distance(fs::directory_iterator("/proc/self/fd"), {});
  return held;
}

/// One project, real files, a real registry file, and a compiler that is a real process.
class LongRunTest : public testing::Test {
 protected:
  LongRunTest() {
    const auto log = folder_.Path() / "drive_c/Program Files/GorbexBuilder/VBResult.log";
    folder_.Put("drive_c/vb6",
                "#!/bin/sh\necho \"Build of 'X' succeeded.\" >'" + log.native() + "'\n");
    fs::permissions(folder_.Path() / "drive_c/vb6", fs::perms::owner_all);
    folder_.Put("drive_c/Core.vbp",
                "Type=OleDll\r\nExeName32=\"Core.dll\"\r\nName=\"Core\"\r\n"
                "CompatibleMode=\"2\"\r\nOptimizationType=0\r\nCodeViewDebugInfo=0\r\n");
    folder_.Put("drive_c/Group.bpf", "project=C:\\Core.vbp\r\nqueue=*C:\\Core.vbp,\r\n");
    fs::create_directories(log.parent_path());
    project_ = folder_.Get("drive_c/Core.vbp");
  }

  // Now and then everything that a run can do, which makes the project file longer.
  void Build(int number) {
    const bool all = number % 100 == 0;
    program_.options.DebugBuild = all ? "True" : "False";
    program_.options.VersionComponents = all ? "1.2.3" : "";
    program_.options.ChangeRefs = true;
    program_.options.Compatible = true;
    program_.run.mnuFileBuild_Click();
    platform_.journal.clear();
    if (!all) return;
    folder_.Put("drive_c/Core.vbp", project_);
    ASSERT_TRUE(program_.buildProject.SaveProject("C:\\Group.bpf"));
  }

  TemporaryFolder folder_;
  std::string project_;
  Prefix prefix_{folder_.Path()};
  LinuxFileSystem files_{prefix_};
  LinuxRegistry registry_{folder_.Path()};
  LinuxProcessLauncher processes_{prefix_, "C:\\Program Files\\GorbexBuilder", [](bool) {}};
  MemoryPlatform platform_;
  ScriptedDialogs dialogs_{platform_.journal};
  Program program_{
      {files_, registry_, processes_, platform_.clock, platform_.events, platform_.components,
       platform_.objects, platform_.sourceControl, platform_.mail, platform_.programFolder,
       [](const auto&) { return std::make_shared<int>(); }},
      dialogs_};
};

TEST_F(LongRunTest, TenThousandBuildsHoldNoMoreThanTheFirstThousand) {
  program_.window.ClearBuildProject();
  ASSERT_TRUE(program_.buildProject.OpenProject("C:\\Group.bpf"));
  program_.window.compilerPath = "C:\\vb6";
  std::int32_t built = 0;
  const Subscription listening = program_.run.events.Connect([&](const RunEvent& event) {
    if (const auto* ended = std::get_if<RunEnded>(&event)) built += ended->built;
  });
  Held early;
  for (int number = 1; number <= kBuilds; ++number) {
    Build(number);
    if (number == kBuilds / 10) early = HeldNow();
  }
  const Held late = HeldNow();
  EXPECT_EQ(built, kBuilds);
  EXPECT_EQ(late.handles, early.handles);
  EXPECT_LT(late.kilobytes, early.kilobytes + 1024) << "after " << early.kilobytes;
}

}  // namespace
}  // namespace gorbex::test
