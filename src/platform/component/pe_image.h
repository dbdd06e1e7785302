#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace gorbex {

/// A type library among the resources of a PE32 or PE32+ file, as a view into the file's bytes:
/// that with the number or the first there is, in its first language. Nothing when there is none,
/// or when the bytes are another file or damaged.
[[nodiscard]] std::optional<std::string_view> FindLibraryResource(
    std::string_view file, std::optional<std::uint16_t> number = std::nullopt);

}  // namespace gorbex
