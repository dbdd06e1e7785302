#include "platform/linux/typed_path.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

bool IsSeparator(char letter) {
  return letter == '\\' || letter == '/';
}

bool IsWindowsPath(const std::string& typed) {
  return typed.starts_with('\\') || (typed.size() > 2 && typed[1] == ':' && IsSeparator(typed[2]));
}

std::string WithSeparator(std::string path, char separator) {
  std::replace_if(path.begin(), path.end(), IsSeparator, separator);
  return path;
}

}  // namespace

std::string ProgramPathOf(const Prefix& prefix, const std::string& typed) {
  // No file that the program can reach has a "\" in its name, so it separates here too.
  if (!IsWindowsPath(typed)) return prefix.WindowsPath(WithSeparator(typed, '/'));
  const auto path = FromUtf8(WithSeparator(typed, '\\'));
  if (!path) throw RuntimeError(ErrorNumber::BadFileName);
  return *path;
}

}  // namespace gorbex
