#pragma once

#include <cstdlib>
#include <filesystem>
#include <string>

#include "platform/code_page.h"
#include "platform/component/library_inspector.h"
#include "platform/linux/file_system.h"
#include "platform/linux/process.h"
#include "platform/linux/registry.h"
#include "platform/linux/system_code_page.h"
#include "platform/linux/tool.h"
#include "tests/platform/linux/variable.h"
#include "tests/platform/outcome.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {

// The services of this system, each over a place that is the test's own.

struct FilesOnSystem {
  TemporaryFolder folder;
  Prefix prefix{folder.Path()};
  LinuxFileSystem files{prefix};
  std::string root = "C:\\";
};

struct RegistryOnSystem {
  TemporaryFolder folder;
  LinuxRegistry registry{folder.Path()};
  static std::string Under(RegistryRoot /*root*/) { return {}; }
};

struct ProcessesOnSystem : FilesOnSystem {
  std::string programFolder = "C:\\Program Files\\GorbexBuilder";
  int ended = 0;
  LinuxProcessLauncher launcher{prefix, programFolder, [this](bool) { ++ended; }};
  std::string tool = prefix.WindowsPath(DUMP_ARGUMENTS);
  std::string out = (folder.Path() / "dump").native();

  std::string Ending(int code) { return "\"" + tool + "\" " + out + " " + std::to_string(code); }
  std::string Dump() { return folder.Get("dump"); }
  std::string Absent() { return "\"C:\\no such\\tool.exe\" x"; }
  std::string InPath() { return "true"; }

  /// A program of the system's folder, of whose name there is another in the program's folder.
  std::string SystemsOwn(const std::string& name, int code) {
    Install(root + "windows\\system32\\" + name + ".exe");
    files.Write(programFolder + "\\" + name + ".exe", "no program");
    return name + " " + out + " " + std::to_string(code);
  }
  std::string Sleeping() { return "sleep 5"; }

  /// How a program hears an argument.
  std::string Told(const std::string& argument) { return ToUtf8(argument); }

  void Install(const std::string& path) {
    const auto place = path.substr(0, path.rfind('\\'));
    if (!files.Look(place)) std::filesystem::create_directories(HostPath(place));
    std::filesystem::copy_file(DUMP_ARGUMENTS, HostPath(path));
  }

 private:
  [[nodiscard]] std::filesystem::path HostPath(std::string path) const {
    for (char& letter : path) letter = letter == '\\' ? '/' : letter;
    return folder.Path() / "drive_c" / path.substr(3);
  }
};

struct ToolsOnSystem {
  Variable path{"PATH", std::filesystem::path(CHATTY_TOOL).parent_path().native() + ":" +
                            std::getenv("PATH")};
  TemporaryFolder root;
  Prefix prefix{root.Path()};
  LinuxToolRunner tools{prefix};
  std::string folder = "C:";
  std::string folderName = "drive_c";
  std::string ticks = "drive_c/ticks";
};

struct InspectorOnSystem : FilesOnSystem {
  LibraryInspector inspector{files};
  std::string libraries = prefix.WindowsPath(TYPE_LIBRARIES);
};

}  // namespace gorbex::test
