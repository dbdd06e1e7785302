#include "cli/ci_system.h"

namespace gorbex::cli {

CiSystem CiSystemOf(const Variables& environment) {
  if (environment("GITHUB_ACTIONS") == "true") return CiSystem::GitHub;
  if (environment("TF_BUILD")) return CiSystem::Azure;
  return environment("TEAMCITY_VERSION") ? CiSystem::TeamCity : CiSystem::None;
}

bool WantsColours(const Variables& environment) {
  return !environment("NO_COLOR") && environment("TERM") != "dumb";
}

}  // namespace gorbex::cli
