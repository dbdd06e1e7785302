#pragma once

#include <filesystem>
#include <string>

#include "platform/linux/host.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {

/// The system's real services over a prefix of the test's own, with the sample product at
/// C:\Storefront.
class WindowBench {
 public:
  WindowBench() {
    std::filesystem::copy(STOREFRONT, Product(), std::filesystem::copy_options::recursive);
  }

  [[nodiscard]] PlatformServices Services(EventPump& events) { return host.Services(events); }

  /// The host's path of the sample product.
  [[nodiscard]] std::filesystem::path Product() const {
    return folder.Path() / "drive_c/Storefront";
  }

  /// The program's path of the stand-in compiler.
  [[nodiscard]] std::string Compiler() const {
    return host.GetPrefix().WindowsPath(STANDIN_COMPILER);
  }

  TemporaryFolder folder;
  LinuxHost host{folder.Path()};
};

}  // namespace gorbex::test
