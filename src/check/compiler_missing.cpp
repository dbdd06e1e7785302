#include "check/checks.h"
#include "platform/command_line.h"

namespace gorbex {

void LookForCompilerMissing(CheckedGroup& group, Findings& found) {
  const auto& [window, options, files, registry, components, references] = group.Parts();
  if (window.compilerPath.empty()) {
    found.push_back({.file = group.File(), .text = "no compiler is registered"});
    return;
  }
  const auto isFile = [&](const std::string& path) {
    return FileExists(group.Parts().files, path);
  };
  if (FindProgram(window.compilerPath, isFile)) return;
  found.push_back({.file = group.File(),
                   .subject = window.compilerPath,
                   .text = "the compiler " + window.compilerPath + " does not exist"});
}

}  // namespace gorbex
