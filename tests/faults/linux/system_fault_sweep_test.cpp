#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <set>

#include "platform/linux/file_system.h"
#include "platform/linux/host_file.h"
#include "platform/linux/registrar.h"
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

struct Fault {
  int error;
  Kind kind = Kind::Error;
};
constexpr Fault kFaults[] = {{ENOENT}, {EACCES}, {ENOSPC}, {ENOSPC, Kind::ShortWrite}, {EIO}};

/// A component that is registered and unregistered over this system's own files, one call of which
/// fails.
class Registration {
 public:
  explicit Registration(bool isFirst) {
    fs::create_directories(folder_.Path() / "drive_c");
    fs::copy_file(TYPE_LIBRARY, folder_.Path() / "drive_c/Part.tlb");
    if (isFirst) return;
    registry_.SetValue(RegistryRoot::CurrentUser, "Software\\Other", "Name",
                       {RegistryType::Text, std::string("kept\0", 5)});
  }

  /// Runs the registration tool; true when it says that all is done.
  bool Run(const std::string& option, int failing = 0, const Fault& fault = {0}) {
    FailingCalls calls(failing, fault.error, fault.kind);
    const auto outcome = registrar_.Run(option + " /s C:\\Part.tlb");
    count = calls.Count();
    return outcome == Registrar::Outcome::Done;
  }

  [[nodiscard]] std::string Text() const { return folder_.Get("gorbexbuilder.reg"); }

  int count = 0;

 private:
  TemporaryFolder folder_;
  Prefix prefix_{folder_.Path()};
  LinuxFileSystem files_{prefix_};
  LinuxRegistry registry_{folder_.Path()};
  Registrar registrar_{files_, registry_};
};

// What failed once is done as a whole by the next attempt.
TEST(SystemFaults, LeaveARegistrationDoneOrUndone) {
  for (const bool isFirst : {true, false}) {
    Registration usual(isFirst);
    const std::string texts[] = {usual.Text(), (usual.Run(""), usual.Text()),
                                 (usual.Run("-u"), usual.Text())};
    EXPECT_NE(texts[1], texts[0]);
    EXPECT_GT(usual.count, 10);
    for (int failing = 1; failing <= 2 * usual.count; ++failing) {
      for (const auto& fault : kFaults) {
        SCOPED_TRACE("call " + std::to_string(failing) + ", error " + std::to_string(fault.error));
        Registration tried(isFirst);
        const bool isDone = tried.Run("", failing, fault);
        EXPECT_TRUE(tried.Text() == texts[1] || (!isDone && tried.Text() == texts[0]));
        EXPECT_TRUE(tried.Run(""));
        EXPECT_EQ(tried.Text(), texts[1]);
        const bool isGone = tried.Run("-u", failing, fault);
        EXPECT_TRUE(!isGone || tried.Text() == texts[2]);
        EXPECT_TRUE(tried.Run("-u"));
        EXPECT_EQ(tried.Text(), texts[2]);
      }
    }
  }
}

TEST(SystemFaults, LeaveEveryFileWholeAndTheProgramReady) {
  const Day usual(0, 0, Kind::Error, Answer::Abort);
  EXPECT_EQ(usual.Complaints(), std::vector<std::string>{});
  EXPECT_GT(usual.count, 400);
  for (int failing = 1; failing <= usual.count; ++failing) {
    for (const auto& fault : kFaults) {
      SCOPED_TRACE("call " + std::to_string(failing) + ", fault " +
                   std::to_string(&fault - kFaults));
      const Day day(failing, fault.error, fault.kind, Answer::Ignore);
      EXPECT_EQ(day.Complaints(), std::vector<std::string>{});
    }
  }
}

}  // namespace
}  // namespace gorbex::test
