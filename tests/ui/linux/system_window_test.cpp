#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dcscreen.h>
#include <wx/menu.h>

#include "tests/ui/window_fixture.h"

namespace gorbex::test {
namespace {

class SystemWindowTest : public WindowFixture {
 protected:
  SystemWindowTest() { Open(kProduct); }
};

TEST_F(SystemWindowTest, AUserControlDrawsItselfIntoTheTestForm) {
  const std::string clsid = "{B0000000-0000-4000-8000-00000000000F}";
  RegistryTools& registry = program->registry;
  registry.subSetRegistryValue("HKEY_CLASSES_ROOT\\StorePriceLabel.PriceLabel\\CLSID", "", clsid);
  registry.subSetRegistryValue("HKEY_CLASSES_ROOT\\CLSID\\" + clsid + "\\InprocServer32", "",
                               bench.host.GetPrefix().WindowsPath(SAMPLE_PLUGIN));
  ListView& queue = program->window.lvwQueue;
  queue.Select(queue.Find("C:\\Storefront\\PriceLabel\\StorePriceLabel.vbp"));
  User::Waits();
  user.Presses('T', wxMOD_CONTROL);
  ASSERT_EQ(The<wxChoice>("cboComponents").GetStringSelection(), "(u) StorePriceLabel.PriceLabel");
  Asked();
  user.Clicks(The<wxButton>("cmdTest"));
  EXPECT_EQ(Asked(), Journal{});
  ASSERT_EQ(program->testControl.Controls().size(), 1U);
  HostedControl& control = *program->testControl.Controls().front();
  user.Types("ff0000");
  auto& canvas = The<wxWindow>("canvas");
  const wxSize size = canvas.GetClientSize();
  EXPECT_EQ(control.size.Get(), (ControlSize{size.x, size.y}));
  const auto pixelAt = [&](const wxPoint& at) {
    wxColour colour;
    const wxPoint onScreen = canvas.ClientToScreen(at);
    wxScreenDC().GetPixel(onScreen.x, onScreen.y, &colour);
    return colour;
  };
  EXPECT_TRUE(User::Sees([&] { return pixelAt({size.x / 2, size.y / 2}) == wxColour(255, 0, 0); }));
  EXPECT_TRUE(pixelAt({0, 0}) == *wxWHITE) << "the frame";

  wxGetTopLevelParent(&canvas)->SetClientSize(300, 200);
  EXPECT_TRUE(User::Sees([&] { return control.size.Get() == ControlSize{300, 200}; }));
  wxGetTopLevelParent(&canvas)->Close();
  User::Waits();
  EXPECT_TRUE(program->testControl.Controls().empty());
  user.Clicks(The<wxButton>("cmdClose"));
  EXPECT_EQ(Shown("frmSelectControl"), nullptr);
}

TEST_F(SystemWindowTest, TicksWhileTheInboxIsChecked) {
  for (const std::string folder : {"mails/", "mails/.Builder/"}) {
    for (const char* part : {"cur", "new", "tmp"}) bench.folder.Put(folder + part + "/.keep", "");
  }
  program->registry.subSetRegistryValue(kProgramKey, "MailStore",
                                        "maildir://" + (bench.folder.Path() / "mails").string());
  wxMenuBar& bar = *frame->GetMenuBar();
  wxMenuItem& entry = *bar.FindItem(bar.FindMenuItem("Tools", "Check Inbox"));
  const auto isChecked = [&] {
    entry.GetMenu()->UpdateUI();
    return entry.IsChecked();
  };
  int ticks = 0;
  const auto listening = program->window.tmrOutlook.elapsed.Connect([&] { ++ticks; });
  program->options.Interval = 0;
  program->window.menu.mnuToolsInBox.Execute();
  EXPECT_TRUE(isChecked());
  User::Waits();
  EXPECT_EQ(ticks, 0) << "a timer of 0 never fires";
  program->window.tmrOutlook.interval.Set(50);
  EXPECT_TRUE(User::Sees([&] { return ticks > 1; }));
  program->window.menu.mnuToolsInBox.Execute();
  EXPECT_FALSE(isChecked());
  EXPECT_TRUE(Close());
}

}  // namespace
}  // namespace gorbex::test
