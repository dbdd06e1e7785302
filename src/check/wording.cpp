#include "check/wording.h"

#include <algorithm>

#include "core/file_tools.h"

namespace gorbex {

std::string FileNames(const std::vector<std::string>& paths) {
  constexpr std::size_t kShown = 3;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < paths.size() && i < kShown; ++i) {
    const std::string name = GetFileFromPath(paths[i]);
    const bool isKnown = std::find(names.begin(), names.end(), name) != names.end();
    names.push_back(isKnown ? paths[i] : name);
  }
  std::string text = Joined(names);
  if (paths.size() > kShown) {
    text.append(" and ").append(Counted(paths.size() - kShown, "other", "others"));
  }
  return text;
}

}  // namespace gorbex
