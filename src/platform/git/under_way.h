#pragma once

#include <string>

#include "platform/file_system.h"
#include "platform/git/runner.h"

namespace gorbex {

/// Throws an error that names it when the user's merge, rebase or the like is unfinished in the
/// working tree. The folder is the Windows path of the tree's top.
void RequireNothingUnderWay(const GitRunner& git, const FileReader& files,
                            const std::string& folder);

}  // namespace gorbex
