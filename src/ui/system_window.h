#pragma once

#include <wx/window.h>

#include <string>

namespace gorbex::ui {

/// A pattern of a file filter ("*.bpf;*.vbp") as the system's file dialogs want it to find names in
/// any letter case.
[[nodiscard]] std::string FilePattern(const std::string& pattern);

/// Shows the user why this window delays the end of the session, until the window is destroyed.
/// Does nothing where the system cannot show it.
void TellWhySessionWaits(wxWindow& window, const wxString& why);

}  // namespace gorbex::ui
