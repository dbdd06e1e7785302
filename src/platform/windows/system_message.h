#pragma once

#include <cstdint>
#include <string>

namespace gorbex {

/// The system's own words for one of its error numbers, without a full stop at the end.
[[nodiscard]] std::string SystemMessage(std::uint32_t number);

}  // namespace gorbex
