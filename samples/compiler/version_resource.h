#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "compiler/resource_section.h"

namespace gorbex::standin {

/// The version properties of a built file.
struct FileVersion {
  std::array<std::uint16_t, 3> numbers{};  ///< major, minor, revision
  std::string product;
  std::string description;
  std::string fileName;
  bool isLibrary = false;
};

[[nodiscard]] Resource VersionResource(const FileVersion& version);

}  // namespace gorbex::standin
