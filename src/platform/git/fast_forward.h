#pragma once

#include <string>

#include "platform/git/incoming.h"
#include "platform/git/runner.h"
#include "platform/git/status.h"

namespace gorbex {

/// Moves the branch checked out forward to the tip, a reference, or fails with git's words. Nothing
/// of the user's is overwritten; where git stops half-way its own work is undone, so that the next
/// attempt does not trip over it. Gives the submodules that the branch now has at another commit.
Incoming::Paths FastForward(const GitRunner& git, const std::string& tip, const GitStatus& before);

}  // namespace gorbex
