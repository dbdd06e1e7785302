#include "compiler/host.h"

#include <windows.h>

#include "platform/command_line.h"
#include "platform/windows/host.h"
#include "platform/windows/wide_text.h"

namespace gorbex::standin {

std::unique_ptr<Host> MakeHost() {
  return std::make_unique<WindowsHost>();
}

// The images of resource numbers 1 and 2 are those of this compiler's own processor.
std::string Image(ImageKind kind) {
  const int number = kind == ImageKind::Program ? 1 : 2;
  const HRSRC place = FindResourceW(nullptr, MAKEINTRESOURCEW(number), RT_RCDATA);
  const HGLOBAL loaded = place != nullptr ? LoadResource(nullptr, place) : nullptr;
  if (loaded == nullptr) return {};
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(nullptr, place)};
}

// The narrow arguments have lost what the code page cannot say, and the backslash at the end of a
// quoted folder.
std::vector<std::string> Arguments(int /*count*/, char** /*values*/) {
  const std::string line = Utf8FromWide(GetCommandLineW());
  const auto parts = FindProgram(line, [](const std::string& /*first*/) { return true; });
  return parts ? SplitFolderArguments(parts->arguments) : std::vector<std::string>();
}

}  // namespace gorbex::standin
