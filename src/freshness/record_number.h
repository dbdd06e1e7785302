#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

// Numbers in the record of builds: digits of 6 bits each, the highest first.

/// The most digits that a number needs.
inline constexpr std::size_t kFullDigits = 11;

[[nodiscard]] std::string FullNumber(std::uint64_t number);

/// Without leading zeros; one digit for 0.
[[nodiscard]] std::string ShortNumber(std::uint64_t number);

/// Nothing for an empty text, one that is too long, and one with other characters.
[[nodiscard]] std::optional<std::uint64_t> NumberIn(std::string_view digits);

}  // namespace gorbex
