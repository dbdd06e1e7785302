#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>

#include "platform/linux/file_system.h"
#include "platform/linux/host_file.h"
#include "platform/linux/registry.h"
#include "platform/linux/registry_text.h"
#include "tests/faults/day_of_work.h"
#include "tests/faults/linux/failing_calls.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;
using Kind = FailingCalls::Kind;

/// A day over this system's own files and registry, one call of which fails.
class Day {
 public:
  Day(int failing, int error, Kind kind, Answer toReports)
      : work(files_, registry_,
             {[this](const auto& path, const auto& bytes) { Put(path, bytes); },
              [this](const auto& path) { return Get(path); }},
             toReports) {
    registry_.SetValue(RegistryRoot::ClassesRoot, "Interface\\{1F}\\TypeLib", "",
                       {RegistryType::Text, "{5E700000-0000-4000-8000-0000C0DEC0DE}" + Zero()});
    work.Prepare();
    fs::create_directories(folder_.Path() / "drive_c/Out");
    FailingCalls calls(failing, error, kind);
    work.Run();
    count = calls.Count();
  }

  /// Files that are not as they must be, whatever failed.
  [[nodiscard]] std::vector<std::string> Complaints() const {
    auto complaints = work.Complaints();
    RegistryKey top;
    if (ReadRegistryText(folder_.Get("gorbexbuilder.reg"), top) > 0) {
      complaints.emplace_back("the registry file is torn");
    }
    if (top.Find("HKEY_LOCAL_MACHINE\\Software\\Classes\\Interface\\{1F}\\TypeLib") == nullptr) {
      complaints.emplace_back("the registry has lost a value nobody touched");
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder_.Path())) {
      const auto name = entry.path().filename().native();
      if (name.starts_with(".gorbex-")) complaints.push_back(name + " is left behind");
    }
    return complaints;
  }

  int count = 0;

 private:
  static std::string Zero() { return std::string(1, '\0'); }

  [[nodiscard]] static std::string HostName(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return "drive_c" + path.substr(2);
  }
  void Put(const std::string& path, const std::string& bytes) const {
    folder_.Put(HostName(path), bytes);
  }
  [[nodiscard]] std::string Get(const std::string& path) const {
    const auto name = HostName(path);
    return fs::exists(folder_.Path() / name) ? folder_.Get(name) : "<absent>";
  }

  TemporaryFolder folder_;
  Prefix prefix_{folder_.Path()};
  LinuxFileSystem files_{prefix_};
  LinuxRegistry registry_{folder_.Path()};

 public:
  DayOfWork work;
};

TEST(SystemFaults, LeaveEveryFileWholeAndTheProgramReady) {
  const struct {
    int error;
    Kind kind;
  } faults[] = {{ENOENT, Kind::Error},
                {EACCES, Kind::Error},
                {ENOSPC, Kind::Error},
                {ENOSPC, Kind::ShortWrite},
                {EIO, Kind::Error}};
  const Day usual(0, 0, Kind::Error, Answer::Abort);
  EXPECT_EQ(usual.Complaints(), std::vector<std::string>{});
  EXPECT_GT(usual.count, 400);
  for (int failing = 1; failing <= usual.count; ++failing) {
    for (const auto& fault : faults) {
      SCOPED_TRACE("call " + std::to_string(failing) + ", fault " +
                   std::to_string(&fault - faults));
      const Day day(failing, fault.error, fault.kind, Answer::Ignore);
      EXPECT_EQ(day.Complaints(), std::vector<std::string>{});
    }
  }
}

}  // namespace
}  // namespace gorbex::test
