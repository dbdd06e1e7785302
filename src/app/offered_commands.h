#pragma once

#include "app/program.h"

namespace gorbex {

/// Tells each command of the program when it can run: what it needs is there, and nothing that it
/// would disturb goes on. The program must outlive its commands.
void OfferCommands(Program& program);

/// Whether any project is loaded.
[[nodiscard]] bool HasProjects(const TreeView& tree);

}  // namespace gorbex
