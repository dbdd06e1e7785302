#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "platform/registry.h"

namespace gorbex {

struct CaselessHash {
  using is_transparent = void;
  [[nodiscard]] std::size_t operator()(std::string_view text) const;
};

struct CaselessEqual {
  using is_transparent = void;
  [[nodiscard]] bool operator()(std::string_view a, std::string_view b) const;
};

/// Names keep the letter case they were first written with and are found in any.
template <typename T>
using CaselessMap = std::unordered_map<std::string, T, CaselessHash, CaselessEqual>;

/// A registry key in memory with everything below it.
class RegistryKey {
 public:
  CaselessMap<RegistryValue> values;
  CaselessMap<std::unique_ptr<RegistryKey>> subKeys;

  /// The key below this one by its path; null when there is none. The empty path is this key.
  [[nodiscard]] const RegistryKey* Find(std::string_view path) const;

  /// Makes the key with all keys above it; null when the path is nested deeper, or has a longer
  /// name, than a registry holds.
  RegistryKey* Make(std::string_view path);

  /// Removes the key of a path with everything below it; false when there is none.
  bool Remove(std::string_view path) { return Take(path) != nullptr; }

  /// Removes a key and hands it over with everything below it; null when there is none.
  std::unique_ptr<RegistryKey> Take(std::string_view path);
};

}  // namespace gorbex
