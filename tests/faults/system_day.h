#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "fault_bench.h"
#include "tests/faults/day_of_work.h"
#include "tests/faults/failing_calls.h"

namespace gorbex::test {

/// A day over this system's own files, one call of which fails.
class SystemDay {
 public:
  SystemDay(int failing, const Fault& fault, Answer toReports = Answer::Ignore)
      : work_(bench_.files, bench_.registry,
              {[this](const auto& path, const auto& bytes) { Put(path, bytes); },
               [this](const auto& path) { return Get(path); }},
              toReports) {
    bench_.registry.SetValue(
        RegistryRoot::ClassesRoot, "Interface\\{1F}\\TypeLib", "",
        {RegistryType::Text, "{5E700000-0000-4000-8000-0000C0DEC0DE}" + std::string(1, '\0')});
    work_.Prepare();
    Put("C:\\Out\\old", "");
    FailingCalls calls(failing, fault);
    work_.Run();
    count = calls.Count();
  }

  /// What is not as it must be, whatever failed.
  [[nodiscard]] std::vector<std::string> Complaints() const {
    auto complaints = work_.Complaints();
    for (const auto& complaint : bench_.Complaints()) complaints.push_back(complaint);
    for (const auto& entry : std::filesystem::recursive_directory_iterator(bench_.folder.Path())) {
      const auto name = entry.path().filename().string();
      if (name.starts_with(".gorbex-")) complaints.push_back(name + " is left behind");
    }
    return complaints;
  }

  int count = 0;

 private:
  // Files are reached past the program by the paths that it uses.
  void Put(const std::string& path, const std::string& bytes) const {
    bench_.folder.Put(FaultBench::HostName(path), bytes);
  }
  [[nodiscard]] std::string Get(const std::string& path) const {
    const auto file = bench_.folder.Path() / FaultBench::HostName(path);
    return exists(file) ? bench_.folder.Get(FaultBench::HostName(path)) : "<absent>";
  }

  FaultBench bench_;
  DayOfWork work_;
};

/// Lets each call of a day fail that can, with one fault after the other.
inline void ExpectWholeFilesAfter(const FaultsInTurn& faults) {
  const SystemDay usual(0, faults.front(), Answer::Abort);
  EXPECT_EQ(usual.Complaints(), std::vector<std::string>{});
  EXPECT_GT(usual.count, 10);
  for (int failing = 1; failing <= usual.count; ++failing) {
    const Fault& fault = faults[static_cast<std::size_t>(failing) % faults.size()];
    SCOPED_TRACE("call " + std::to_string(failing) + ", error " + std::to_string(fault.error));
    const SystemDay day(failing, fault);
    EXPECT_EQ(day.Complaints(), std::vector<std::string>{});
  }
}

}  // namespace gorbex::test
