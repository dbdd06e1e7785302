#pragma once

#include <cstddef>
#include <string>

namespace gorbex {

/// The numbers of the build queue's sub-items.
namespace queue_column {
inline constexpr std::size_t kProject = 1;
inline constexpr std::size_t kDependency = 2;
inline constexpr std::size_t kCompatibility = 3;
inline constexpr std::size_t kBuilt = 4;
}  // namespace queue_column

/// The numbers of the reference list's sub-items.
namespace reference_column {
inline constexpr std::size_t kVersion = 1;
inline constexpr std::size_t kComponent = 2;
inline constexpr std::size_t kRegistryPath = 3;
inline constexpr std::size_t kDescription = 4;
inline constexpr std::size_t kVerdict = 5;
}  // namespace reference_column

/// The numbers of the sub-items in the list of missing components.
namespace missing_column {
inline constexpr std::size_t kProjects = 1;
inline constexpr std::size_t kVersion = 2;
inline constexpr std::size_t kFile = 3;
inline constexpr std::size_t kGuid = 4;
inline constexpr std::size_t kVerdict = 5;
}  // namespace missing_column

/// The queue's texts for the compatibility column.
[[nodiscard]] inline std::string CompatibilityText(bool isCompatible) {
  return isCompatible ? "Compatible" : "NOT Compatible!";
}

}  // namespace gorbex
