#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/process.h"

namespace gorbex {

/// Starts programs by the system's rules, but never from the current folder: a name without a
/// folder is looked for in the system's folders first, so that nobody can replace RegSvr32, then in
/// the program's own folder and the search path. A child reads nothing, and its output joins this
/// program's error output, unless that is a console.
class WindowsProcessLauncher : public ProcessLauncher {
 public:
  explicit WindowsProcessLauncher(std::string programFolder)
      : programFolder_(std::move(programFolder)) {}

  [[nodiscard]] StartResult Start(const std::string& commandLine) override;
  [[nodiscard]] StartResult StartProgram(const std::string& program,
                                         const std::vector<std::string>& arguments) override;

 private:
  [[nodiscard]] static StartResult Start(const std::wstring& program, const std::string& name,
                                         const std::wstring& arguments);
  [[nodiscard]] std::optional<std::wstring> Locate(const std::string& name) const;

  std::string programFolder_;
};

}  // namespace gorbex
