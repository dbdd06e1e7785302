// Single parts of the program, for work that no command does by itself:
//
// parts rewrite PREFIX: gives the modules of C:\Rewrite\Rewrite.vbp the new identities
// parts log PREFIX LINES: writes lines to the activity log
// parts plain FILE LINES: the floor under that, opens, writes and closes a file for each line
#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

#include "analysis/reference_update.h"
#include "core/activity_log.h"
#include "core/project_file.h"
#include "platform/linux/clock.h"
#include "platform/linux/file_system.h"
#include "platform/linux/registry.h"

namespace {

using namespace gorbex;

/// Nothing may be asked here.
class SilentDialogs : public Dialogs {
 public:
  Answer Ask(const Message& /*message*/) override { std::exit(3); }
  std::optional<std::string> OpenFile(const FileChoice& /*choice*/) override { return {}; }
  std::vector<std::string> OpenFiles(const FileChoice& /*choice*/) override { return {}; }
  std::optional<std::string> OpenFileOrFolder(const FileChoice& /*choice*/) override { return {}; }
  std::optional<std::string> SaveFile(const FileChoice& /*choice*/) override { return {}; }
  std::optional<std::string> BrowseForDir(const std::string& /*title*/) override { return {}; }
  std::optional<std::string> Input(const std::string& /*prompt*/,
                                   const std::string& /*initial*/) override {
    return {};
  }
  void ShowOptions(frmOptions& /*form*/) override {}
  void ShowLogin(frmLogin& /*form*/) override {}
  void ShowLabel(frmLabel& /*form*/) override {}
};

/// Every component defines the interface of its name: "C:\Bin\{id}.dll" has {id}.
class NamedInterfaces : public ComponentInspector {
 public:
  [[nodiscard]] std::string InterfaceGuid(const std::string& file,
                                          const std::string& /*absent*/) const override {
    const auto open = file.find('{');
    return file.substr(open, file.find('}') + 1 - open);
  }
  [[nodiscard]] std::optional<InnerLibrary> LibraryIn(std::string_view /*file*/) const override {
    return {};
  }
};

struct System {
  explicit System(const char* root) : prefix(root) {}

  Prefix prefix;
  LinuxFileSystem files{prefix};
  LinuxRegistry registry{prefix.Root()};
  LinuxClock clock;
  SilentDialogs dialogs;
  ErrorReport report{dialogs};
  ActivityLog log{files, clock, dialogs, "C:\\Program Files\\GorbexBuilder"};
};

void Rewrite(System& system) {
  const std::string path = "C:\\Rewrite\\Rewrite.vbp";
  frmBuilder window;
  window.buildDirectory = "C:\\Bin\\";
  clsMember project = ParseProjectFile(path, system.files.Read(path)).member;
  for (const std::string& reference : project.Refs) {
    clsMember component;
    component.path = reference;
    component.EXEName = reference.substr(reference.rfind('#') + 1);
    window.lvwQueue.Add(reference, "", Image::VbProject).SetSubItem(1, reference);
    window.ProjectMembers.Add(component);
  }
  window.ProjectMembers.Add(project);
  const RegistryTools registry(system.registry, system.report);
  const NamedInterfaces components;
  const GroupDependency group(window.ProjectMembers);
  const ReferenceResolution references(registry, system.files, components, system.report);
  DependencyMarking marking(window, references, group, system.log, system.report);
  BuildQueue queue(window, group, system.files, system.dialogs, system.report);
  ProjectDisplay display(window, marking, queue, system.report);
  ReferenceUpdate(window, system.files, registry, components, display, system.report)
      .UpdateProjectReferences(path);
}

void Log(System& system, int lines) {
  for (int i = 0; i < lines; ++i)
    system.log.WriteLog("Building C:\\Group\\Part00001\\Part00001.vbp");
}

void Plain(const char* path, int lines) {
  constexpr std::string_view kLine =
      "[01/01/2000 12:00:00] Building C:\\Group\\Part00001\\Part00001.vbp\r\n";
  for (int i = 0; i < lines; ++i) {
    const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666);
    if (file < 0 || write(file, kLine.data(), kLine.size()) < 0) std::exit(1);
    close(file);
  }
}

}  // namespace

int main(int count, char** values) {
  const std::string_view what = count > 2 ? values[1] : "";
  const int lines = count > 3 ? std::atoi(values[3]) : 0;
  if (what == "plain") {
    Plain(values[2], lines);
    return 0;
  }
  if (what != "rewrite" && what != "log") return 2;
  System system(values[2]);
  if (what == "rewrite") {
    Rewrite(system);
  } else {
    Log(system, lines);
  }
  return 0;
}
