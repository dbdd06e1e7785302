#include "check/check_selection.h"

#include <algorithm>

#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::size_t kMostProblems = 5;
constexpr std::size_t kShownLetters = 40;

bool Contains(const std::vector<std::string>& ids, std::string_view id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::string_view Stripped(std::string_view line) {
  constexpr std::string_view kBlanks = " \t\r\n";
  line = line.substr(0, line.find('#'));
  const auto first = line.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

}  // namespace

bool CheckSelection::Wants(const Check& check) const {
  if (isQuick && !check.isQuick) return false;
  return (only.empty() || Contains(only, check.id)) && !Contains(ignored, check.id);
}

IgnoredChecks IgnoredIn(const FileReader& files, const std::string& folder) {
  IgnoredChecks found;
  const std::string path = JoinPath(folder, ".gorbexcheck");
  if (!files.Look(path)) return found;
  std::string text;
  try {
    text = files.Read(path);
  } catch (const RuntimeError& error) {
    found.problems.push_back(error.Description());
    return found;
  }
  std::size_t number = 0;
  for (const auto line : Split(text, '\n')) {
    ++number;
    const auto id = Stripped(line);
    if (id.empty()) continue;
    if (FindCheck(id) != nullptr) {
      found.ids.emplace_back(id);
    } else if (found.problems.size() < kMostProblems) {
      found.problems.push_back(path + ", line " + std::to_string(number) + ": unknown check \"" +
                               std::string(id.substr(0, kShownLetters)) + "\"");
    }
  }
  return found;
}

}  // namespace gorbex
