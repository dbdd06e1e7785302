#pragma once

#include <array>
#include <cstdint>
#include <string_view>

namespace gorbex::standin {

/// The SHA-1 digest, as name-based identities need it. Not for anything that must be kept secret.
[[nodiscard]] std::array<std::uint8_t, 20> Sha1(std::string_view bytes);

}  // namespace gorbex::standin
