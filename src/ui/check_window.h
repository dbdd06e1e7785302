#pragma once

#include "core/check_form.h"
#include "ui/command_ids.h"
#include "ui/form_window.h"
#include "ui/pane.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// The findings of a check, over their state. It begins at the foot of the main window, so that the
/// project it leads to is in sight.
class CheckWindow : public FormWindow {
 public:
  /// The form must outlive the window.
  CheckWindow(wxWindow* parent, frmCheck& form, CommandIds& ids);

 private:
  void Place() override { PlaceAtFoot(320); }

  frmCheck& form_;
  Pane* pane_;
  StateList* list_ = nullptr;
};

}  // namespace gorbex::ui
