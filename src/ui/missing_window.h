#pragma once

#include <wx/splitter.h>

#include "core/missing_form.h"
#include "ui/command_ids.h"
#include "ui/form_window.h"
#include "ui/pane.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// The missing components beside the projects that reference the selected one, over their state. It
/// begins at the foot of the main window, so that the project it leads to is in sight.
class MissingWindow : public FormWindow {
 public:
  /// The form must outlive the window.
  MissingWindow(wxWindow* parent, frmMissing& form, CommandIds& ids);

 private:
  void ShowEmptyPanes();
  void Place() override;

  frmMissing& form_;
  wxSplitterWindow* columns_;
  Pane* components_;
  Pane* projects_;
  StateList* list_;  ///< of the components
};

}  // namespace gorbex::ui
