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

RunClaims ClaimsOf(const clsMember& project, const std::string& folder, const FileReader& files) {
  const std::string own = StripPath(project.path);
  const ProjectSources sources = SourcesOf(project.path, files);
  RunClaims claims;
  claims.writes = LowerCase(BuiltFile(project, folder));
  if (!sources.compatibleBinary.empty()) {
    claims.reads = LowerCase(ResolvedPath(own, sources.compatibleBinary));
  }
  std::vector<std::string>& exclusive = claims.exclusive;
  exclusive = {claims.writes, LowerCase(own)};
  for (const std::string& source : sources.members) {
    exclusive.push_back(LowerCase(StripPath(ResolvedPath(own, source))));
  }
  std::sort(exclusive.begin(), exclusive.end());
  exclusive.erase(std::unique(exclusive.begin(), exclusive.end()), exclusive.end());
  return claims;
}

}  // namespace gorbex
