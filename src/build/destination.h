#pragma once

#include <optional>
#include <string>

#include "core/dialogs.h"

namespace gorbex {

/// Asks for a folder to build into and gives it with a "\" at its end. Nothing when the choice was
/// cancelled, or for a folder that already ends in "\": the root of a drive cannot be a build
/// folder.
[[nodiscard]] std::optional<std::string> AskForDestination(Dialogs& dialogs);

}  // namespace gorbex
