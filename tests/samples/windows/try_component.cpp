// Tries components as a user does in the form for it, and prints what the user is told:
// try-component FILE.bpf PROJECT.vbp [ENTRY PROPERTY VALUE]...
#include <cstdlib>
#include <iostream>
#include <string>
#include <vector>

#include "app/program.h"
#include "platform/code_page.h"
#include "platform/windows/host.h"
#include "tests/support/recording_events.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {
namespace {

class Trial {
 public:
  Trial() { program_.window.ClearBuildProject(); }

  void Open(const std::string& buildProject, const std::string& project) {
    program_.buildProject.LoadProject(buildProject);
    auto& queue = program_.window.lvwQueue;
    queue.Select(queue.Find(project));
    program_.window.menu.mnuQueueTest.Execute();
    for (const auto& entry : form_.cboComponents.items.Get()) std::cout << entry << '\n';
    Tell();
  }

  void Test(const std::string& entry, const std::string& property, const std::string& value) {
    const auto& entries = form_.cboComponents.items.Get();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i] == entry) form_.cboComponents.selected.Set(i);
    }
    form_.txtProperty.text.Set(property);
    form_.txtValue.text.Set(value);
    form_.cmdTest.Execute();
    Tell();
  }

 private:
  void Tell() {
    for (const auto& line : std::exchange(journal_, {})) std::cout << ToUtf8(line) << '\n';
  }

  WindowsHost host_;
  RecordingEvents events_;
  Journal journal_;
  ScriptedDialogs dialogs_{journal_};
  Program program_{host_.Services(events_), dialogs_};
  frmSelectControl& form_ = program_.selectControl;
};

}  // namespace
}  // namespace gorbex::test

int main(int argc, char** argv) {
  const std::vector<std::string> arguments(argv + 1, argv + argc);
  if (arguments.size() < 2) return EXIT_FAILURE;
  gorbex::test::Trial trial;
  trial.Open(arguments[0], arguments[1]);
  for (std::size_t i = 2; i + 2 < arguments.size(); i += 3) {
    trial.Test(arguments[i], arguments[i + 1], arguments[i + 2]);
  }
  return EXIT_SUCCESS;
}
