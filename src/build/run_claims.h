#pragma once

#include <string>
#include <vector>

#include "core/member.h"
#include "platform/file_system.h"

namespace gorbex {

/// The files and folders that a project's build works on, in small letters.
struct RunClaims {
  std::string writes;  ///< the built file
  std::string reads;   ///< the file that it is compatible with; empty for none
  /// The built file, the folder of the project file, and those of its sources: the compiler leaves
  /// work files beside them. Two builds with an equal one must not run at once.
  std::vector<std::string> exclusive;
};

/// The claims of a build into a folder (empty: the project's own). Without sources when the project
/// file cannot be read.
[[nodiscard]] RunClaims ClaimsOf(const clsMember& project, const std::string& folder,
                                 const FileReader& files);

}  // namespace gorbex
