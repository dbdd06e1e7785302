#pragma once

#include <algorithm>
#include <cerrno>
#include <filesystem>
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

  // Files are reached past the program by the paths that it uses.
  void Put(const std::string& path, const std::string& bytes) const {
    folder.Put(HostName(path), bytes);
  }
  [[nodiscard]] std::string Get(const std::string& path) const {
    const auto name = HostName(path);
    return std::filesystem::exists(folder.Path() / name) ? folder.Get(name) : "<absent>";
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

 private:
  [[nodiscard]] static std::string HostName(std::string path) {
    std::replace(path.begin(), path.end(), '\\', '/');
    return "drive_c" + path.substr(2);
  }
};

}  // namespace gorbex::test
