#include "platform/windows/controls/activex_objects.h"

#include <gtest/gtest.h>
#include <wx/app.h>
#include <wx/frame.h>
#include <wx/init.h>

#include "automation_servers.h"
#include "tests/platform/outcome.h"

namespace gorbex::test {
namespace {

// A control that every Windows has.
constexpr const char* kControl = "Shell.Explorer";

TEST(ActiveXObjects, AreShownInAWindowThatFollowsTheirSize) {
  ActiveXObjects objects;
  auto* frame = new wxFrame(nullptr, wxID_ANY, "Test");
  frame->Show();
  objects.AddLicense(kControl);
  auto control = objects.CreateControl(kControl, {});
  control->SetSize({200, 100});
  ASSERT_TRUE(control->ShowIn(frame));
  ASSERT_FALSE(frame->GetChildren().empty());
  const auto* shown = frame->GetChildren().front();
  EXPECT_EQ(shown->GetSize(), wxSize(200, 100));
  const HWND own = GetWindow(shown->GetHWND(), GW_CHILD);
  RECT place{};
  ASSERT_TRUE(GetWindowRect(own, &place));
  EXPECT_EQ(wxSize(place.right - place.left, place.bottom - place.top), wxSize(200, 100));
  control->SetSize({300, 150});
  GetWindowRect(own, &place);
  EXPECT_EQ(wxSize(place.right - place.left, place.bottom - place.top), wxSize(300, 150));

  auto second = objects.CreateControl(kControl, {});
  ASSERT_TRUE(second->ShowIn(frame));
  control.reset();
  EXPECT_EQ(frame->GetChildren().GetCount(), 1U);
  delete frame;
  second->SetSize({10, 10});  // outlives its window
}

TEST(ActiveXObjects, AreRefusedWithoutTheirKeyAndWhenTheyAreNoControls) {
  const AutomationServers servers("");
  ActiveXObjects objects;
  const std::string start = "429 ActiveX component can't create object: ";
  const auto error = [&](const std::string& identifier) {
    return ErrorOf([&] {
      objects.AddLicense(identifier);
      static_cast<void>(objects.CreateControl(identifier, {}));
    });
  };
  EXPECT_EQ(error("No.Such"), start + "'No.Such': it is not registered");
  EXPECT_EQ(error("GorbexTest.Free"), start + "'GorbexTest.Free': it is not a control");
  const auto refused = error("GorbexTest.Licensed");
  EXPECT_TRUE(refused.starts_with(start + "'GorbexTest.Licensed': ")) << refused;
  EXPECT_FALSE(refused.ends_with("it is not a control")) << refused;
}

}  // namespace
}  // namespace gorbex::test

int main(int count, char** values) {
  testing::InitGoogleTest(&count, values);
  wxApp::SetInstance(new wxApp);
  const wxInitializer toolkit;
  return RUN_ALL_TESTS();
}
