#include <windows.h>

#include <wx/button.h>

#include "tests/ui/window_fixture.h"

namespace gorbex::test {
namespace {

class SystemWindowTest : public WindowFixture {
 protected:
  SystemWindowTest() { Open(kProduct); }

  /// Builds the row of a project; its icon afterwards.
  std::string Build(const std::string& project) {
    ListView& queue = program->window.lvwQueue;
    const auto row = queue.Find(project);
    queue.Select(row);
    program->window.menu.mnuQueueBuild.Execute();
    User::Waits();
    Asked();
    return IconsOf(queue);
  }
};

TEST_F(SystemWindowTest, ATestedComponentIsBuiltAgain) {
  const std::string money = "C:\\Storefront\\Money\\StoreMoney.vbp";
  Build("C:\\Storefront\\Core\\StoreCore.vbp");
  const std::string built = Build(money);
  EXPECT_EQ(built.find("builderror"), std::string::npos) << built;
  for (const bool closes : {true, false}) {
    user.Presses('T', wxMOD_CONTROL);
    Asked();
    user.Clicks(The<wxButton>("cmdTest"));
    EXPECT_EQ(Asked(), Journal{"show object created StoreMoney.Amount"});
    EXPECT_NE(GetModuleHandleW(L"StoreMoney.dll"), nullptr);
    if (closes) {
      user.Clicks(The<wxButton>("cmdClose"));
      EXPECT_EQ(GetModuleHandleW(L"StoreMoney.dll"), nullptr) << "it is still loaded";
    }
    EXPECT_EQ(Build(money), built);
    EXPECT_TRUE(program->failed.All().empty());
  }
}

}  // namespace
}  // namespace gorbex::test
