#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// Bytes of a mail in the code page. An unknown character set, or one that the bytes do not fit,
/// counts as the code page.
[[nodiscard]] std::string FromCharacterSet(std::string_view bytes, const std::string& name);

/// Bytes of a mail that name no character set: UTF-8 when they can be, else the code page.
[[nodiscard]] std::string FromAnyCharacterSet(std::string_view bytes);

}  // namespace gorbex
