#include "platform/git/spec.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/plain_text.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

bool IsForbidden(char letter) {
  return static_cast<unsigned char>(letter) < 0x20 ||
         std::string_view("\\/:*?\"<>|\x7F").find(letter) != std::string_view::npos;
}

// Windows drops dots and blanks at the end of a name, and knows a short form of it.
bool IsGitFolder(std::string_view name) {
  const auto kept = name.substr(0, name.find_last_not_of(". ") + 1);
  return EqualsIgnoringCase(kept, ".git") || EqualsIgnoringCase(kept, "git~1");
}

}  // namespace

bool IsItemName(std::string_view name) {
  return name.find_first_not_of(". ") != std::string_view::npos && !IsGitFolder(name) &&
         std::none_of(name.begin(), name.end(), IsForbidden);
}

std::string PathOfSpec(const std::string& spec) {
  if (!spec.starts_with("$/")) throw RuntimeError(ErrorNumber::BadFileName, spec);
  std::string path;
  for (const auto name : Split(std::string_view(spec).substr(2), '/')) {
    if (name.empty()) continue;
    if (!IsItemName(name)) throw RuntimeError(ErrorNumber::BadFileName, spec);
    path.append(path.empty() ? "" : "/").append(name);
  }
  return path;
}

}  // namespace gorbex
