#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace gorbex {

/// A resource of a PE32 or PE32+ file, as a view into the file's bytes: of the type with that name
/// (upper case, as resource compilers write it), with that number or the first there is, in its
/// first language. Nothing when there is none, or when the bytes are another file or damaged.
[[nodiscard]] std::optional<std::string_view> FindPeResource(
    std::string_view file, std::string_view type,
    std::optional<std::uint16_t> number = std::nullopt);

}  // namespace gorbex
