#include "build/destination.h"

namespace gorbex {

std::optional<std::string> AskForDestination(Dialogs& dialogs) {
  const auto folder = dialogs.BrowseForDir("Please specify a destination path");
  if (!folder || folder->empty() || folder->ends_with('\\')) return std::nullopt;
  return *folder + "\\";
}

}  // namespace gorbex
