#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace gorbex {

/// The key of the tree's only top node, the build project.
inline constexpr std::string_view kRootKey = "root";

/// The kinds of nodes in the project tree. A node's key is its prefix (for items with a 1-based
/// number) followed by the path of the project it belongs to.
namespace node_prefix {
inline constexpr std::string_view kProject = "x)";
inline constexpr std::string_view kReferences = "r)";
inline constexpr std::string_view kReference = "r-";
inline constexpr std::string_view kObjects = "o)";
inline constexpr std::string_view kObject = "o-";
inline constexpr std::string_view kMembers = "m)";
inline constexpr std::string_view kMember = "m-";
inline constexpr std::string_view kUserControl = "u-";
inline constexpr std::string_view kProperties = "i)";
inline constexpr std::string_view kProperty = "i";
}  // namespace node_prefix

[[nodiscard]] inline std::string NodeKey(std::string_view prefix, std::string_view path) {
  return std::string(prefix).append(path);
}

[[nodiscard]] inline std::string ItemKey(std::string_view prefix, std::size_t number,
                                         std::string_view path) {
  return std::string(prefix).append(std::to_string(number)).append(path);
}

}  // namespace gorbex
