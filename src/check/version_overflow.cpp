#include "build/version_stamp.h"
#include "check/checks.h"
#include "core/text.h"

namespace gorbex {
namespace {

// The numbers of a version are 16 bits wide in a project, and the compiler lets them reach 9999.
constexpr double kLargest = 9999;

double NumberOf(const CheckedProject& project, std::string_view key) {
  try {
    return NumericValue(project.Value(key));
  } catch (const RuntimeError&) {
    return kLargest + 1;
  }
}

std::string VersionOf(const CheckedProject& project) {
  std::string version;
  for (const auto* key : {"MajorVer", "MinorVer", "RevisionVer"}) {
    const auto value = project.Value(key);
    version.append(version.empty() ? "" : ".").append(value.empty() ? "0" : value);
  }
  return version;
}

std::string ProblemOf(const CheckedProject& project, bool isStamped) {
  const std::string version = VersionOf(project);
  if (isStamped) {
    if (CanBeStamped(version)) return {};
    return "the version " + version + " is too large to be compared with the wanted one";
  }
  const bool increments = project.Value("AutoIncrementVer") == "1";
  if (!increments || NumberOf(project, "RevisionVer") < kLargest) return {};
  return "the revision of " + version + " cannot be increased further";
}

}  // namespace

void LookForVersionOverflow(CheckedGroup& group, Findings& found) {
  const std::string& wanted = group.Parts().options.VersionComponents;
  if (!wanted.empty() && !CanBeStamped(wanted)) {
    found.push_back({.file = group.File(),
                     .subject = wanted,
                     .text = "the version " + wanted + " cannot be stamped"});
    return;
  }
  for (const CheckedProject& project : group.Projects()) {
    const std::string problem = project.isBuilt ? ProblemOf(project, !wanted.empty()) : "";
    if (problem.empty()) continue;
    found.push_back(FindingIn(project.path, VersionOf(project), problem));
    if (const ProjectLine* line = project.Line("RevisionVer")) found.back().line = line->number;
  }
}

}  // namespace gorbex
