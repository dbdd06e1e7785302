#include "platform/windows/process.h"

#include <windows.h>

#include <memory>
#include <string_view>
#include <system_error>

#include "platform/command_line.h"
#include "platform/windows/child_process.h"
#include "platform/windows/full_path.h"
#include "platform/windows/system_message.h"
#include "platform/windows/wide_text.h"

namespace gorbex {

std::optional<std::wstring> WindowsProcessLauncher::Locate(const std::string& name) const {
  const auto full = FullPathOf(name);
  if (!full) return std::nullopt;
  const bool isBare = name.find_first_of("\\/:") == std::string::npos;
  if (!isBare) return IsFile(*full) ? full : std::nullopt;
  for (const auto& folder : {TextOfCall(&GetSystemDirectoryW), TextOfCall(&GetWindowsDirectoryW),
                             ToWide(programFolder_)}) {
    auto place = folder + L"\\" + ToWide(name);
    if (IsFile(place)) return place;
  }
  return FindInPath(ToWide(name));
}

StartResult WindowsProcessLauncher::Start(const std::string& commandLine) {
  const auto text = std::string_view(commandLine).substr(0, commandLine.find('\0'));
  std::optional<std::wstring> program;
  const auto found = FindProgram(text, [&](const std::string& candidate) {
    program = Locate(candidate);
    return program.has_value();
  });
  if (!found || !program) return RuntimeError(ErrorNumber::FileNotFound, ProgramText(text));
  return Start(*program, found->program, ToWide(found->arguments));
}

StartResult WindowsProcessLauncher::StartProgram(const std::string& program,
                                                 const std::vector<std::string>& arguments) {
  const auto found = FindProgram("\"" + program + "\"", [&](const std::string& candidate) {
    return Locate(candidate).has_value();
  });
  const auto path = found ? Locate(found->program) : std::nullopt;
  if (!path) return RuntimeError(ErrorNumber::FileNotFound, program);
  return Start(*path, program, WideFromUtf8(JoinArguments(arguments)));
}

StartResult WindowsProcessLauncher::Start(const std::wstring& program, const std::string& name,
                                          const std::wstring& arguments) {
  try {
    const ChildStart start{program, L"\"" + program + L"\"" + arguments};
    return std::make_unique<ChildProcess>(start);
  } catch (const std::system_error& error) {
    const auto number = static_cast<std::uint32_t>(error.code().value());
    return RuntimeError::WithReason(ErrorNumber::InvalidCall, name, SystemMessage(number));
  }
}

}  // namespace gorbex
