#include "build/program_argument.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace gorbex {

void RequireArgument(const std::string& path) {
  const auto isForbidden = [](char c) { return c == '"' || static_cast<unsigned char>(c) < ' '; };
  const bool isOption = path.starts_with('-') || path.starts_with('/');
  if (!isOption && std::none_of(path.begin(), path.end(), isForbidden)) return;
  std::string shown = path;
  std::replace_if(shown.begin(), shown.end(), isForbidden, '?');
  throw RuntimeError(ErrorNumber::BadFileName, shown);
}

}  // namespace gorbex
