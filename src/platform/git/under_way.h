#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/git/runner.h"

namespace gorbex {

/// Error that names it when a merge, a rebase or the like of the user's waits in the working tree
/// for its end. The folder is the Windows path of the tree's top.
void RequireNothingUnderWay(const GitRunner& git, const FileReader& files,
                            const std::string& folder);

}  // namespace gorbex
