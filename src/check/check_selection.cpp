#include "check/check_selection.h"

#include <algorithm>
#include <utility>

#include "core/file_tools.h"
#include "core/text.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr std::size_t kMostProblems = 5;
constexpr std::size_t kShownLetters = 40;

bool Contains(const std::vector<std::string>& ids, std::string_view id) {
  return std::ranges::find(ids, id) != ids.end();
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
    const auto id = Trimmed(line.substr(0, line.find('#')));
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

CheckSelection SelectionBeside(const FileReader& files, const std::string& buildProject,
                               std::string* problem) {
  if (buildProject.empty()) return {};
  auto [ids, problems] = IgnoredIn(files, StripPath(buildProject));
  if (problem != nullptr && !problems.empty()) *problem = problems.front();
  return {{}, std::move(ids)};
}

}  // namespace gorbex
