#include <gtest/gtest.h>

#include <filesystem>

#include "fault_bench.h"
#include "platform/linux/registrar.h"

namespace gorbex::test {
namespace {

namespace fs = std::filesystem;

/// A component that is registered and unregistered over this system's own files, one call of which
/// fails.
class Registration {
 public:
  explicit Registration(bool isFirst) {
    fs::create_directories(bench_.folder.Path() / "drive_c");
    fs::copy_file(TYPE_LIBRARY, bench_.folder.Path() / "drive_c/Part.tlb");
    if (isFirst) return;
    bench_.registry.SetValue(RegistryRoot::CurrentUser, "Software\\Other", "Name",
                             {RegistryType::Text, std::string("kept\0", 5)});
  }

  /// Runs the registration tool; true when it says that all is done.
  bool Run(const std::string& option, int failing = 0, const Fault& fault = {}) {
    FailingCalls calls(failing, fault);
    const auto outcome = registrar_.Run(option + " /s C:\\Part.tlb");
    count = calls.Count();
    return outcome == Registrar::Outcome::Done;
  }

  [[nodiscard]] std::string Text() const { return bench_.folder.Get("gorbexbuilder.reg"); }

  int count = 0;

 private:
  FaultBench bench_;
  Registrar registrar_{bench_.files, bench_.registry};
};

// After a failure the next attempt does the whole work.
TEST(SystemFaults, LeaveARegistrationDoneOrUndone) {
  for (const bool isFirst : {true, false}) {
    Registration usual(isFirst);
    const std::string texts[] = {usual.Text(), (usual.Run(""), usual.Text()),
                                 (usual.Run("-u"), usual.Text())};
    EXPECT_NE(texts[1], texts[0]);
    EXPECT_GT(usual.count, 10);
    for (int failing = 1; failing <= 2 * usual.count; ++failing) {
      for (const auto& faults : kSweeps) {
        const Fault& fault = faults.front();
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

}  // namespace
}  // namespace gorbex::test
