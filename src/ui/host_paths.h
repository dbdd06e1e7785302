#pragma once

#include <optional>
#include <string>

namespace gorbex::ui {

/// Translates between the paths of the system's file dialogs and the program's Windows paths.
class HostPaths {
 public:
  virtual ~HostPaths() = default;

  /// The program's path of a file that the system calls by a UTF-8 path; nothing when no path of
  /// the program can name it.
  [[nodiscard]] virtual std::optional<std::string> ProgramPath(
      const std::string& hostPath) const = 0;

  /// The system's UTF-8 path of the folder where the first file dialog begins; empty lets the
  /// system choose.
  [[nodiscard]] virtual std::string FirstFolder() const = 0;

  /// A pattern of a file filter ("*.bpf;*.vbp") as the system's file dialogs want it to find names
  /// in any letter case.
  [[nodiscard]] virtual std::string FilePattern(const std::string& pattern) const = 0;
};

}  // namespace gorbex::ui
