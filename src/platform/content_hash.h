#pragma once

#include <cstdint>
#include <string_view>

namespace gorbex {

/// 128 bits that tell contents apart: equal ones mean equal bytes, as far as accidents go. They are
/// no guard against a forger.
struct ContentHash {
  std::uint64_t high = 0;
  std::uint64_t low = 0;

  auto operator<=>(const ContentHash&) const = default;
};

/// The same on every machine.
[[nodiscard]] ContentHash HashOf(std::string_view bytes);

}  // namespace gorbex
