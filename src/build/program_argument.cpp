#include "build/program_argument.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace gorbex {
namespace {

bool IsForbidden(char letter) {
  return letter == '"' || static_cast<unsigned char>(letter) < ' ';
}

[[noreturn]] void Refuse(std::string path) {
  std::ranges::replace_if(path, IsForbidden, '?');
  throw RuntimeError(ErrorNumber::BadFileName, path);
}

}  // namespace

void RequireArgument(const std::string& path) {
  const bool isOption = path.starts_with('-') || path.starts_with('/');
  if (isOption || std::ranges::any_of(path, IsForbidden)) Refuse(path);
}

void RequireFileArgument(const std::string& path) {
  RequireArgument(path);
  if (path.ends_with('\\')) Refuse(path);
}

}  // namespace gorbex
