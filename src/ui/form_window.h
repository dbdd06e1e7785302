#pragma once

#include <wx/dialog.h>

#include <functional>

#include "core/property.h"

namespace gorbex::ui {

/// A form that stays open beside the main window and follows whether its state is visible.
class FormWindow : public wxDialog {
 public:
  /// `unload` is called when the user closes the window; it makes the state invisible.
  FormWindow(wxWindow* parent, const wxString& title, const wxString& name, Property<bool>& visible,
             const std::function<void()>& unload);

 protected:
  /// Called before the window appears.
  virtual void Place() { CentreOnParent(); }

 private:
  void ShowAsTold(bool visible);

  Subscription subscription_;
};

}  // namespace gorbex::ui
