#pragma once

#include <wx/string.h>

#include <cstddef>
#include <string>

namespace gorbex::ui {

/// The program's code-page bytes as the toolkit's text.
[[nodiscard]] wxString ToWx(const std::string& text);

/// The toolkit's text as code-page bytes; a character that the code page lacks becomes "?". No path
/// can contain it, so such a path is never mistaken for another one.
[[nodiscard]] std::string FromWx(const wxString& text);

/// The first `most` bytes of a text; "..." replaces the rest. Words of more than 1000 bytes are
/// broken, because the toolkit takes minutes to lay out a long line that it cannot break.
[[nodiscard]] std::string Excerpt(const std::string& text, std::size_t most);

}  // namespace gorbex::ui
