#pragma once

#include <wx/string.h>

#include <string>

namespace gorbex::ui {

/// The program's code-page bytes as the toolkit's text.
[[nodiscard]] wxString ToWx(const std::string& text);

/// The toolkit's text as code-page bytes; a character that the code page lacks becomes "?", which
/// no path can hold, so that such a path is never found instead of being mistaken for another.
[[nodiscard]] std::string FromWx(const wxString& text);

}  // namespace gorbex::ui
