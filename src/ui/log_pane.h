#pragma once

#include <wx/panel.h>
#include <wx/textctrl.h>

#include <string>

#include "core/main_window.h"

namespace gorbex::ui {

class CommandIds;
class EmptyHint;

/// The compiler's log of the projects that failed, with a button that hides it again.
class LogPane : public wxPanel {
 public:
  LogPane(wxWindow* parent, CommandIds& ids, TextBox& state);

 private:
  void ShowText(const std::string& text);

  wxTextCtrl* text_;
  EmptyHint* hint_;
  Subscription subscription_;
};

}  // namespace gorbex::ui
