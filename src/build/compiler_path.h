#pragma once

#include <string>

#include "core/dialogs.h"
#include "core/main_window.h"
#include "core/registry_tools.h"

namespace gorbex {

/// Finds the compiler: the registered one, or one that the user chooses. A chosen path is not
/// stored.
class CompilerPath {
 public:
  CompilerPath(frmBuilder& window, const RegistryTools& registry, Dialogs& dialogs)
      : window_(window), registry_(registry), dialogs_(dialogs) {}

  /// The command that the system opens a project with; empty when none is registered.
  [[nodiscard]] std::string RegisteredCommand() const;

  /// Takes the registered compiler; the window has none when there is none.
  void TakeRegistered();

  /// As TakeRegistered, then asks the user when none is registered.
  void Find();

  static constexpr std::string_view kKey =
      "HKEY_CLASSES_ROOT\\VisualBasic.Project\\shell\\open\\command";

 private:
  frmBuilder& window_;
  const RegistryTools& registry_;
  Dialogs& dialogs_;
};

}  // namespace gorbex
