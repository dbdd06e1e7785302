#include "ui/frame_place.h"

#include <wx/display.h>

#include <optional>

#include "ui/window_place.h"

namespace gorbex::ui {

FramePlace::FramePlace(wxFrame& frame, frmBuilder& window)
    : frame_(frame),
      window_(window),
      subscription_(
          window.position.changed.Connect([this](const std::optional<WindowPosition>& position) {
            if (position && hasBegun_ && !isTelling_) PutOnScreen(frame_, *position);
          })) {
  frame_.Bind(wxEVT_MOVE, &FramePlace::OnMoved, this);
  frame_.Bind(wxEVT_SIZE, &FramePlace::OnMoved, this);
}

void FramePlace::OnMoved(wxEvent& event) {
  event.Skip();
  Tell();
}

void FramePlace::Begin() {
  hasBegun_ = true;
  if (const auto& position = window_.position.Get()) {
    PutOnScreen(frame_, *position);
  } else {
    frame_.SetSize(InTheMiddle(frame_.GetSize(), wxDisplay(&frame_).GetClientArea()));
  }
  Tell();
}

void FramePlace::Tell() {
  const bool isOrdinary =
      frame_.IsShown() && !frame_.IsMaximized() && !frame_.IsIconized() && !frame_.IsFullScreen();
  if (!hasBegun_ || !isOrdinary) return;
  isTelling_ = true;
  window_.position.Set(PlaceOf(frame_));
  isTelling_ = false;
}

}  // namespace gorbex::ui
