#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/dialogs.h"
#include "core/options.h"
#include "platform/process.h"

namespace gorbex {

/// Opens files at a line in the user's editor, as the setting Editor names it, or without one as
/// the system opens them.
class Editor {
 public:
  Editor(const clsOptions& options, ProcessLauncher& processes, Dialogs& dialogs)
      : options_(options), processes_(processes), dialogs_(dialogs) {}

  /// Opens a file, at its first line where none is known. An editor that cannot be started is told.
  /// A file that might be a program is not given to the system.
  void Open(const std::string& file, std::optional<std::size_t> line);

  /// The system's way to open a file of the program; false when it cannot.
  std::function<bool(const std::string& file)> openBySystem;

  /// The host's UTF-8 path of a file of the program; without it the program's path is the host's.
  std::function<std::string(const std::string& file)> hostPath;

 private:
  void Start(const std::string& file, std::size_t line);
  void Tell(const std::string& problem);

  const clsOptions& options_;
  ProcessLauncher& processes_;
  Dialogs& dialogs_;
  std::vector<std::unique_ptr<Process>> started_;  ///< until their end has been seen
};

}  // namespace gorbex
