#pragma once

#include <wx/frame.h>

#include "core/main_window.h"

namespace gorbex::ui {

/// Where the main window is. The state knows the place, or the one that the window would have if it
/// were not maximized.
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
