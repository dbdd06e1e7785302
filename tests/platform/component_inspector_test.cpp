#include <gtest/gtest.h>

#include <map>
#include <vector>

#include "system_bench.h"

namespace gorbex::test {
namespace {

constexpr const char* kDefault = " ";
constexpr const char* kMain = "{C1A55E50-0011-2233-4455-66778899AA03}";
constexpr const char* kOwn = "{C0B1E500-0011-2233-4455-66778899AA02}";
constexpr const char* kClock = "{E7E47500-0011-2233-4455-66778899AA01}";

TEST(ComponentInspector, AnswersAnInterfaceThatTheComponentDefines) {
  const InspectorOnSystem bench;
  const std::map<std::string, std::vector<std::string>> cases = {
      {kMain, {"\\classes.tlb", "\\CLASSES64.TLB", "\\twice32.dll\\3", "\\twice64.dll\\3"}},
      {kOwn, {"\\copies.tlb"}},
      {kClock, {"\\events.tlb", "\\twice32.dll", "\\twice32.dll\\2", "\\twice64.dll"}},
      {kDefault,
       {"\\kinds.tlb", "\\stdole2.tlb", "\\none32.dll", "\\none64.dll", "\\twice32.dll\\9",
        "\\twice32.dll\\65539", "\\twice32.dll\\3x", "\\absent.dll", ""}},
  };
  for (const auto& [answer, names] : cases) {
    for (const auto& name : names)
      EXPECT_EQ(bench.inspector.InterfaceGuid(bench.libraries + name, kDefault), answer) << name;
  }
}

}  // namespace
}  // namespace gorbex::test
