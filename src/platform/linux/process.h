#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/prefix.h"
#include "platform/process.h"

namespace gorbex {

/// Starts native programs directly and Windows programs under Wine, without any shell. A child
/// reads nothing, and its output joins this program's error output. The system's registration tool
/// is Wine's where there is Wine; elsewhere this program's own replaces it.
class LinuxProcessLauncher : public ProcessLauncher {
 public:
  /// Runs the registration tool's arguments and gives its exit code.
  using RegSvr32 = std::function<std::uint32_t(std::string_view arguments)>;

  /// Called once for every child whose end was seen.
  using OnEnded = std::function<void(bool underWine)>;

  LinuxProcessLauncher(const Prefix& prefix, std::string programFolder, OnEnded onEnded,
                       RegSvr32 regSvr32 = {});

  [[nodiscard]] StartResult Start(const std::string& commandLine) override;
  [[nodiscard]] StartResult StartProgram(const std::string& program,
                                         const std::vector<std::string>& arguments) override;

 private:
  /// The place of a program; without a Windows path when it was found in the host's PATH.
  struct Program {
    std::string hostPath;
    std::string windowsPath;
  };

  [[nodiscard]] std::optional<Program> Locate(const std::string& name) const;
  [[nodiscard]] std::vector<std::string> Arguments(const Program& program,
                                                   std::vector<std::string> arguments) const;
  [[nodiscard]] StartResult Start(const Program& program, const std::string& name,
                                  std::vector<std::string> arguments) const;
  [[nodiscard]] std::vector<std::string> ChildEnvironment() const;

  const Prefix& prefix_;
  std::string programFolder_;
  OnEnded onEnded_;
  RegSvr32 regSvr32_;
};

}  // namespace gorbex
