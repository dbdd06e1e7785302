#pragma once

class wxWindow;

namespace gorbex::ui {

/// Tells what the program is, until the user has read it.
void ShowAbout(wxWindow* parent);

}  // namespace gorbex::ui
