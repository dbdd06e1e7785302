#pragma once

#include <wx/dialog.h>
#include <wx/textctrl.h>

#include <optional>

#include "core/dialogs.h"

namespace gorbex::ui {

/// A message with its icon and buttons. The text can be selected and copied as it is; a long one
/// is scrolled, and a long path is broken anywhere.
class MessageWindow : public wxDialog {
 public:
  MessageWindow(wxWindow* parent, const wxString& caption, const Message& message);

  /// Shows the message until one of its buttons is pressed; nothing when the user closed the window
  /// or pressed Esc, and no button says so.
  [[nodiscard]] std::optional<Answer> Ask();

 private:
  [[nodiscard]] wxTextCtrl* MakeText(const wxString& text);
  [[nodiscard]] wxSizer* MakeButtons(Buttons buttons);

  std::optional<Answer> answer_;
};

}  // namespace gorbex::ui
