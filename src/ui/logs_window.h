#pragma once

#include <wx/combobox.h>
#include <wx/stattext.h>

#include "core/logs_form.h"
#include "ui/find_bar.h"
#include "ui/form_window.h"

namespace gorbex::ui {

/// The log viewer over its state. What it shows can be searched and copied.
class LogsWindow : public FormWindow {
 public:
  LogsWindow(wxWindow* parent, frmLogs& form);

 private:
  [[nodiscard]] wxSizer* Head();
  void Copy();
  void ShowDays();
  void ShowDay();

  frmLogs& form_;
  wxStaticText* heading_;  ///< made before the list, to which its access key leads
  wxComboBox* days_;
  wxTextCtrl* text_;
  FindBar* find_;
};

}  // namespace gorbex::ui
