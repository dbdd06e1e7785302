#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// The text that a reader of an HTML page sees; both are in the code page. Tags, scripts and styles
/// are left out, names of characters ("&amp;") become the characters, and a line feed follows each
/// block and each forced break.
[[nodiscard]] std::string HtmlText(std::string_view html);

}  // namespace gorbex
