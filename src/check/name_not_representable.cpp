#include <algorithm>
#include <array>

#include "check/checks.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kLongestPath = 259;

bool IsDeviceName(std::string_view fileName) {
  static constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
  const std::string name = LowerCase(fileName.substr(0, fileName.find('.')));
  if (std::ranges::find(kDevices, name) != kDevices.end()) return true;
  const bool isPort = name.starts_with("com") || name.starts_with("lpt");
  return isPort && name.size() == 4 && name[3] >= '1' && name[3] <= '9';
}

// Why a file of this path cannot be there on Windows; empty when it can.
std::string ProblemOf(const std::string& path) {
  const std::string name = GetFileFromPath(path);
  if (IsDeviceName(name)) return name + " is the name of a device";
  if (path.size() > kLongestPath) {
    return "the path has " + std::to_string(path.size()) + " characters; the compiler takes " +
           std::to_string(kLongestPath);
  }
  return {};
}

}  // namespace

// A source that is missing is an error already.
void LookForNameNotRepresentable(CheckedGroup& group, Findings& found) {
  for (const auto& [path, reason, hasImpossibleName] : group.UnreadProjects()) {
    if (!hasImpossibleName) continue;
    found.push_back(FindingIn(path, path,
                              "the name holds a character that is not in the system's code page, "
                              "or in no Windows path"));
  }
  for (const CheckedProject& project : group.Projects()) {
    const std::string problem = ProblemOf(project.path);
    if (!problem.empty()) found.push_back(FindingIn(project.path, project.path, problem));
  }
  for (const CheckedSource& source : group.Sources()) {
    if (source.state == CheckedSource::State::Missing) continue;
    const std::string problem = ProblemOf(source.path);
    if (problem.empty()) continue;
    const auto& use = source.uses.front();
    found.push_back(FindingIn(use.project->path, source.path, problem, use.line));
  }
}

}  // namespace gorbex
