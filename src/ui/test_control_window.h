#pragma once

#include <wx/bitmap.h>

#include <functional>

#include "core/test_control_form.h"
#include "ui/form_window.h"

namespace gorbex::ui {

/// The host form of user controls under test: shows what they draw and hands them what the user
/// does.
class TestControlWindow : public FormWindow {
 public:
  /// `resized` is called when the form's client size has changed.
  TestControlWindow(wxWindow* parent, frmTestControl& form, const std::function<void()>& resized);

 private:
  void FollowLast();
  void OnPaint();
  void OnMouse(wxMouseEvent& event);
  [[nodiscard]] HostedControl* Front() const;

  frmTestControl& form_;
  wxWindow* canvas_;
  Subscriptions controls_;  ///< to the controls that are there now
};

}  // namespace gorbex::ui
