#pragma once

#include <wx/string.h>

namespace gorbex::ui {

/// Puts a text into the clipboard; changes nothing while another program holds it.
void CopyText(const wxString& text);

}  // namespace gorbex::ui
