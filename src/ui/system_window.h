#pragma once

#include <wx/frame.h>
#include <wx/window.h>

#include <string>

namespace gorbex::ui {

/// An entry of a file filter (a text and its pattern, such as "*.bpf") in the form "text|pattern"
/// as the system's file dialogs want it: they find names in any letter case, and every program
/// where an executable is asked for.
[[nodiscard]] std::string FileFilter(const std::string& text, const std::string& pattern);

/// Menus and tool bar of a frame that is not shown yet wait for its first size, where the toolkit
/// would lay them out too early. `ShowBars` ends the wait.
void HoldBarsBack(wxFrame& frame);
void ShowBars(wxFrame& frame);

/// Shows the user why this window delays the end of the session, until the window is destroyed.
/// Does nothing where the system cannot show it.
void TellWhySessionWaits(wxWindow& window, const wxString& why);

}  // namespace gorbex::ui
