#pragma once

#include <cstdint>
#include <string_view>

namespace gorbex {

/// A 128-bit hash of contents. Different contents do not have the same hash by accident, but
/// somebody could forge one.
struct ContentHash {
  std::uint64_t high = 0;
  std::uint64_t low = 0;

  auto operator<=>(const ContentHash&) const = default;
};

/// The same on every machine.
[[nodiscard]] ContentHash HashOf(std::string_view bytes);

}  // namespace gorbex
