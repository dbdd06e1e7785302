#pragma once

#include <windows.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/process.h"
#include "platform/windows/handle.h"

namespace gorbex {

/// How a child starts: with no handle of this program but its three streams. It is ended with
/// everything it started.
struct ChildStart {
  std::wstring program;        ///< full path
  std::wstring commandLine;    ///< the program's name, quoted, and its arguments
  std::wstring environment{};  ///< as EnvironmentWith gives it; empty for our own
  std::wstring folder{};       ///< empty for our own
  HANDLE input = nullptr;      ///< null for nothing to read
  HANDLE output = GetStdHandle(STD_ERROR_HANDLE);
  HANDLE errorOutput = GetStdHandle(STD_ERROR_HANDLE);
  bool hasOwnConsole = false;  ///< one without a window, out of reach of our console's keys
};

/// A child of this process. A separate window for a console program appears only where this
/// program has one.
class ChildProcess : public Process {
 public:
  /// Fails with std::system_error.
  explicit ChildProcess(const ChildStart& start);
  ~ChildProcess() override;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;

  [[nodiscard]] std::optional<std::uint32_t> ExitCode(std::chrono::milliseconds patience) override;
  void Terminate() override;
  void OutliveProgram() override;

 private:
  /// The child and what it starts, all of which ends when this program is killed; none on a system
  /// without jobs within jobs.
  Handle job_;
  Handle process_;
};

/// The absolute folders of the search path, in its order.
[[nodiscard]] std::vector<std::wstring> FoldersOfPath();

/// The program of that name (".exe" need not be said) in the folders of the search path.
[[nodiscard]] std::optional<std::wstring> FindInPath(const std::wstring& name);

/// This program's environment with variables set, or taken away where the value is nothing, in the
/// system's form. Names ignore letter case; texts are UTF-8.
[[nodiscard]] std::wstring EnvironmentWith(
    const std::map<std::string, std::optional<std::string>>& changes);

/// A variable of this program's environment; nothing when it is not set.
[[nodiscard]] std::optional<std::wstring> EnvironmentVariable(const wchar_t* name);

}  // namespace gorbex
