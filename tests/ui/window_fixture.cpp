#include "tests/ui/window_fixture.h"

namespace gorbex::test {

WindowFixture::WindowFixture() {
  Program setUp(bench.Services(pump), dialogs);
  setUp.shell.ShellAndWait("\"" + bench.Compiler() + "\" /regserver");
  setUp.registry.subSetRegistryValue(kProgramKey, "Compatible", "True");
}

WindowFixture::~WindowFixture() {
  if (frame != nullptr) {
    delete frame;
    User::Waits();
  }
}

void WindowFixture::Open(const std::string& commandLine) {
  program = std::make_unique<Program>(bench.Services(pump), dialogs);
  frame = new ui::MainFrame(*program, [this](const std::string& folder) {
    journal.push_back("folder " + folder);
    return true;
  });
  frame->Bind(wxEVT_DESTROY, [this](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == frame) frame = nullptr;
    event.Skip();
  });
  program->start.SetCommandLine(commandLine);
  program->start.Form_Load();
  frame->Show();
  ASSERT_TRUE(User::Sees([&] { return frame->IsActive() && program->window.position.Get(); }));
  User::Waits();
}

void WindowFixture::Build() {
  user.Presses(WXK_F7);
  ASSERT_TRUE(User::Sees([&] { return !program->work.Goes(Task::Run); }));
}

bool WindowFixture::Close() {
  frame->Close();
  User::Waits();
  return frame == nullptr;
}

}  // namespace gorbex::test
