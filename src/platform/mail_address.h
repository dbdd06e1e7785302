#pragma once

#include <string>

namespace gorbex {

/// True for "local@domain" in plain ASCII, with nothing in it that could end a line or a list.
[[nodiscard]] bool IsMailAddress(const std::string& text);

/// True for "local@domain" and "Name <local@domain>".
[[nodiscard]] bool NamesMailAddress(const std::string& text);

}  // namespace gorbex
