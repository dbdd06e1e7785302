#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// The text that a reader sees of an HTML text (code page): no tags, scripts or styles, characters
/// for their names, and line feeds where blocks and forced breaks end lines.
[[nodiscard]] std::string HtmlText(std::string_view html);

}  // namespace gorbex
