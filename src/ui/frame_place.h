#pragma once

#include <wx/frame.h>

#include "core/main_window.h"

namespace gorbex::ui {

/// Keeps the main window's place in the state: of a maximized window, the place that it has
/// otherwise.
class FramePlace : public wxEvtHandler {
 public:
  /// Both must outlive the place.
  FramePlace(wxFrame& frame, frmBuilder& window);

  /// Puts the window where the state says, or in the middle of its screen. From then on each
  /// follows the other.
  void Begin();

 private:
  void OnMoved(wxEvent& event);
  void Tell();

  wxFrame& frame_;
  frmBuilder& window_;
  bool hasBegun_ = false;
  bool isTelling_ = false;  ///< the state follows the window; the window does not move
  Subscription subscription_;
};

}  // namespace gorbex::ui
