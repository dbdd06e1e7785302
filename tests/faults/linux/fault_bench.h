#pragma once

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "platform/linux/file_system.h"
#include "platform/linux/prefix.h"
#include "platform/linux/registry.h"
#include "platform/linux/registry_text.h"
#include "tests/faults/failing_calls.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {

inline const std::vector<FaultsInTurn> kSweeps = {
    {{ENOENT}}, {{EACCES}}, {{ENOSPC}}, {{ENOSPC, Fault::Kind::ShortWrite}}, {{EIO}}};

/// The files and the registry of this system in a folder of the test's own.
struct FaultBench {
  TemporaryFolder folder;
  Prefix prefix{folder.Path()};
  LinuxFileSystem files{prefix};
  LinuxRegistry registry{folder.Path()};

  /// Where the program's path is in the folder.
  [[nodiscard]] static std::string HostName(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return "drive_c" + path.substr(2);
  }

  [[nodiscard]] std::vector<std::string> Complaints() const {
    std::vector<std::string> complaints;
    RegistryKey top;
    if (ReadRegistryText(folder.Get("gorbexbuilder.reg"), top) > 0) {
      complaints.emplace_back("the registry file is torn");
    }
    if (top.Find("HKEY_LOCAL_MACHINE\\Software\\Classes\\Interface\\{1F}\\TypeLib") == nullptr) {
      complaints.emplace_back("the registry has lost a value nobody touched");
    }
    return complaints;
  }
};

}  // namespace gorbex::test
