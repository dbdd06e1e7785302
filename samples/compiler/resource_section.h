#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gorbex::standin {

/// A resource of an image. One of each type is enough for what is built here.
struct Resource {
  std::string typeName;          ///< in capital letters; empty for a type that has a number
  std::uint32_t typeNumber = 0;  ///< of a type without a name
  std::uint32_t number = 1;
  std::uint32_t language = 0;
  std::string bytes;
};

/// The content of a resource section that is loaded at the address. Named types come first, then
/// those with rising numbers.
[[nodiscard]] std::string ResourceSection(const std::vector<Resource>& resources,
                                          std::uint32_t address);

}  // namespace gorbex::standin
