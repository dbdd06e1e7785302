#include "build/run_claims.h"

#include <algorithm>

#include "core/file_tools.h"
#include "freshness/project_sources.h"
#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows_path.h"

namespace gorbex {
namespace {

ProjectSources SourcesOf(const std::string& path, const FileReader& files) {
  try {
    return ReadSources(files.Read(path));
  } catch (const RuntimeError&) {
    return {};
  }
}

}  // namespace

std::vector<std::string> RunClaims(const clsMember& project, const std::string& folder,
                                   const FileReader& files) {
  const std::string own = StripPath(project.path);
  std::vector<std::string> claims = {LowerCase(BuiltFile(project, folder)), LowerCase(own)};
  for (const std::string& source : SourcesOf(project.path, files).members) {
    claims.push_back(LowerCase(StripPath(ResolvedPath(own, source))));
  }
  std::sort(claims.begin(), claims.end());
  claims.erase(std::unique(claims.begin(), claims.end()), claims.end());
  return claims;
}

}  // namespace gorbex
