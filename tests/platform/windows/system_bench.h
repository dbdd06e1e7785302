#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <utility>

#include "platform/windows/child_process.h"
#include "platform/windows/component_inspector.h"
#include "platform/windows/file_system.h"
#include "platform/windows/process.h"
#include "platform/windows/registry.h"
#include "platform/windows/system_code_page.h"
#include "platform/windows/tool.h"
#include "tests/platform/outcome.h"
#include "tests/platform/temporary_folder.h"
#include "variable.h"

namespace gorbex::test {

// The services of this system, each over a place that is the test's own.

struct FilesOnSystem {
  TemporaryFolder folder;
  CurrentFolder inside{folder.Path()};  // paths without a drive mean the current one
  WindowsFileSystem files;
  std::string root = WindowsPath(folder.Path()) + "\\";
};

/// Keys are made below those of one name, which are gone again after the test.
struct RegistryOnSystem {
  WindowsRegistry registry;

  ~RegistryOnSystem() {
    const std::pair<RegistryRoot, HKEY> tops[] = {{RegistryRoot::ClassesRoot, HKEY_CLASSES_ROOT},
                                                  {RegistryRoot::CurrentUser, HKEY_CURRENT_USER},
                                                  {RegistryRoot::LocalMachine, HKEY_LOCAL_MACHINE},
                                                  {RegistryRoot::Users, HKEY_USERS}};
    for (const auto& [root, top] : tops) {
      auto key = ToWide(Under(root));
      key.pop_back();
      RegDeleteTreeW(top, key.c_str());
    }
  }

  /// The system allows no keys directly below most of its roots.
  static std::string Under(RegistryRoot root) {
    if (root == RegistryRoot::ClassesRoot) return "GorbexTest\\";
    return root == RegistryRoot::Users ? ".Default\\GorbexTest\\" : "Software\\GorbexTest\\";
  }
};

struct ProcessesOnSystem : FilesOnSystem {
  std::string programFolder = root + "Program";
  WindowsProcessLauncher launcher{programFolder};
  std::string tool = WindowsPath(DUMP_ARGUMENTS);
  std::string out = root + "dump";

  std::string Ending(int code) { return "\"" + tool + "\" " + out + " " + std::to_string(code); }
  std::string Dump() { return folder.Get("dump"); }
  std::string Absent() { return "\"C:\\no such\\tool.exe\" x"; }
  std::string InPath() { return "cmd /c exit 0"; }

  /// A program of the system's folder, of whose name there is another in the program's folder.
  std::string SystemsOwn(const std::string& name, int code) {
    Install(programFolder + "\\" + name + ".exe");
    return name + " /c exit " + std::to_string(code);
  }
  std::string Sleeping() { return "\"" + WindowsPath(CHATTY_TOOL) + "\" sleep"; }

  /// How a program hears an argument.
  std::string Told(const std::string& argument) { return argument; }

  void Install(const std::string& path) {
    const std::filesystem::path place(ToWide(path));
    std::filesystem::create_directories(place.parent_path());
    std::filesystem::copy_file(DUMP_ARGUMENTS, place);
  }
};

struct ToolsOnSystem {
  Variable path{"PATH", WindowsPath(std::filesystem::path(CHATTY_TOOL).parent_path())};
  TemporaryFolder root;
  WindowsToolRunner tools;
  std::string folder = WindowsPath(root.Path());
  std::string folderName = root.Path().filename().string();
  std::string ticks = "ticks";
};

struct InspectorOnSystem : FilesOnSystem {
  WindowsComponentInspector inspector{files};
  std::string libraries = WindowsPath(TYPE_LIBRARIES);
};

}  // namespace gorbex::test
