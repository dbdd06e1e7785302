#include <gtest/gtest.h>

#include <optional>

#include "tests/faults/day_of_work.h"

namespace gorbex::test {
namespace {

/// A day over a system in memory, one operation of which fails.
struct Day {
  Day(int failing, ErrorNumber error, Answer toReports)
      : work(inner.files, inner.registry,
             {[this](const auto& path, const auto& bytes) { inner.files.AddFile(path, bytes); },
              [this](const auto& path) { return inner.files.Text(path); }},
             toReports) {
    inner.registry.AddText(RegistryRoot::ClassesRoot, "Interface\\{1F}\\TypeLib", "",
                           "{5E700000-0000-4000-8000-0000C0DEC0DE}");
    inner.files.AddFolder(inner.programFolder);
    work.Prepare();
    inner.registry.fails = [=, this] { return ++count == failing; };
    inner.files.fails = [=, this] {
      return inner.registry.fails() ? std::optional(error) : std::nullopt;
    };
    work.Run();
  }

  int count = 0;  ///< operations until now
  MemoryPlatform inner;
  DayOfWork work;
};

// Every operation fails once with every error, and the user goes on or tries again.
TEST(Faults, LeaveEveryFileWholeAndTheProgramReady) {
  constexpr ErrorNumber kErrors[] = {ErrorNumber::FileNotFound, ErrorNumber::PermissionDenied,
                                     ErrorNumber::DiskFull, ErrorNumber::DeviceError};
  const Day usual(0, ErrorNumber::DiskFull, Answer::Abort);
  EXPECT_EQ(usual.work.Complaints(), std::vector<std::string>{});
  EXPECT_EQ(usual.work.Reports(), 0);
  EXPECT_GT(usual.count, 120);
  for (int failing = 1; failing <= usual.count; ++failing) {
    for (const auto error : kErrors) {
      for (const auto answer : {Answer::Ignore, Answer::Retry}) {
        SCOPED_TRACE("operation " + std::to_string(failing) + ", error " +
                     std::to_string(static_cast<int>(error)) +
                     (answer == Answer::Retry ? ", tried again" : ""));
        const Day day(failing, error, answer);
        EXPECT_EQ(day.work.Complaints(), std::vector<std::string>{});
        if (answer == Answer::Retry && day.work.Reports() > 0) {
          EXPECT_EQ(day.work.Files(), usual.work.Files()) << "as if nothing had failed";
        }
      }
    }
  }
}

}  // namespace
}  // namespace gorbex::test
