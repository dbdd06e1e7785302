#pragma once

#include <string>
#include <vector>

#include "compiler/identity.h"
#include "platform/file_system.h"
#include "platform/registry.h"

namespace gorbex::standin {

struct MakeResult {
  bool built = false;
  std::vector<std::string> lines;  ///< for the result log
};

/// The paths that all builds of a machine start from.
struct Foundation {
  std::string programImage;  ///< the images have no resources yet
  std::string libraryImage;
  NewIdentities identities{};
};

/// Checks and builds one project; an empty output folder means the project's own. Only the first
/// fault is told.
[[nodiscard]] MakeResult Make(FileSystem& files, Registry& registry, const std::string& project,
                              const std::string& outputFolder, const Foundation& foundation);

}  // namespace gorbex::standin
