#pragma once

#include <string>
#include <vector>

#include "core/member.h"
#include "platform/file_system.h"

namespace gorbex {

/// What a project's build writes to: the file it builds into that folder (empty: its own), the
/// folder of the project file, and the folders of its sources, because the compiler leaves work
/// files beside them. Two builds with an equal text among them must not run at once. A project file
/// that cannot be read gives the first two.
[[nodiscard]] std::vector<std::string> RunClaims(const clsMember& project,
                                                 const std::string& folder,
                                                 const FileReader& files);

}  // namespace gorbex
