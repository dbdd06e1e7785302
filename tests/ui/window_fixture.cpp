#include "tests/ui/window_fixture.h"

#include <filesystem>

namespace gorbex::test {

WindowFixture::WindowFixture() {
  std::filesystem::copy(STOREFRONT, folder.Path() / "drive_c/Storefront",
                        std::filesystem::copy_options::recursive);
  Program setUp(platform.Services(pump), dialogs);
  const std::string compiler = platform.GetPrefix().WindowsPath(STANDIN_COMPILER);
  setUp.shell.ShellAndWait("\"" + compiler + "\" /regserver");
  setUp.registry.subSetRegistryValue(kProgramKey, "Compatible", "True");
}

WindowFixture::~WindowFixture() {
  if (frame != nullptr) {
    delete frame;
    User::Waits();
  }
}

void WindowFixture::Open(const std::string& commandLine) {
  program = std::make_unique<Program>(platform.Services(pump), dialogs);
  frame = new ui::MainFrame(*program);
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

bool WindowFixture::Close() {
  frame->Close();
  User::Waits();
  return frame == nullptr;
}

std::string WindowFixture::Icons() const {
  std::string icons;
  for (const auto& row : program->window.lvwQueue.Rows()) {
    icons.append(icons.empty() ? "" : " ").append(ImageKey(row->Icon()));
  }
  return icons;
}

}  // namespace gorbex::test
