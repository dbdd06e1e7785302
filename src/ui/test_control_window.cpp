#include "ui/test_control_window.h"

#include <wx/dcbuffer.h>
#include <wx/image.h>
#include <wx/sizer.h>

#include <cstdint>

#include "ui/observe.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

wxBitmap PictureOf(HostedControl& control, ControlSize size) {
  std::vector<std::uint32_t> pixels(static_cast<std::size_t>(size.width) *
                                    static_cast<std::size_t>(size.height));
  control.Paint({pixels.data(), size, static_cast<std::size_t>(size.width)});
  wxImage image(size.width, size.height, false);
  unsigned char* to = image.GetData();
  for (const std::uint32_t pixel : pixels) {
    *to++ = static_cast<unsigned char>(pixel >> 16U);
    *to++ = static_cast<unsigned char>(pixel >> 8U);
    *to++ = static_cast<unsigned char>(pixel);
  }
  return wxBitmap(image);
}

PointerEvent EventOf(const wxMouseEvent& event) {
  PointerEvent pointer;
  pointer.x = event.GetX();
  pointer.y = event.GetY();
  const bool isMove = event.Moving() || event.Dragging();
  pointer.action = isMove             ? PointerAction::Move
                   : event.ButtonUp() ? PointerAction::Release
                                      : PointerAction::Press;
  const int button = event.GetButton();
  pointer.button = button == wxMOUSE_BTN_LEFT     ? PointerButton::Left
                   : button == wxMOUSE_BTN_RIGHT  ? PointerButton::Right
                   : button == wxMOUSE_BTN_MIDDLE ? PointerButton::Middle
                                                  : PointerButton::None;
  return pointer;
}

}  // namespace

TestControlWindow::TestControlWindow(wxWindow* parent, frmTestControl& form,
                                     const std::function<void()>& resized)
    : FormWindow(parent, "Test Control", "frmTestControl", form.visible,
                 [&form] { form.Unload(); }),
      form_(form),
      canvas_(new wxWindow(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                           wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE, "canvas")) {
  canvas_->SetBackgroundStyle(wxBG_STYLE_PAINT);
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(canvas_, wxSizerFlags(1).Expand());
  SetSizer(sizer);
  SetClientSize(FromDIP(wxSize(420, 300)));
  Layout();
  const auto tellSize = [this] {
    const wxSize size = canvas_->GetClientSize();
    form_.clientSize = {size.x, size.y};
  };
  tellSize();
  Observe(*canvas_, wxEVT_SIZE, [tellSize, resized] {
    tellSize();
    resized();
  });
  canvas_->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { OnPaint(); });
  for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_UP, wxEVT_RIGHT_DOWN, wxEVT_RIGHT_UP,
                           wxEVT_MIDDLE_DOWN, wxEVT_MIDDLE_UP, wxEVT_MOTION}) {
    canvas_->Bind(type, &TestControlWindow::OnMouse, this);
  }
  canvas_->Bind(wxEVT_CHAR, [this](wxKeyEvent& event) {
    HostedControl* front = Front();
    const auto typed = static_cast<char32_t>(event.GetUnicodeKey());
    if (front != nullptr && typed != 0) front->KeyPress(typed);
    event.Skip();
  });
  subscriptions_.Add(form_.added, [this] { FollowLast(); });
  subscriptions_.Add(form_.unloading, [this] { controls_.Clear(); });
}

HostedControl* TestControlWindow::Front() const {
  return form_.Controls().empty() ? nullptr : form_.Controls().back().get();
}

void TestControlWindow::FollowLast() {
  HostedControl* last = Front();
  if (last == nullptr) return;
  const auto repaint = [this](const auto&...) { canvas_->Refresh(); };
  controls_.Add(last->repaint, repaint);
  controls_.Add(last->size.changed, repaint);
  controls_.Add(last->problem.changed, repaint);
  canvas_->SetFocus();
  canvas_->Refresh();
  last->ShowIn(canvas_);
}

// Each control is in front of those added before it.
void TestControlWindow::OnPaint() {
  wxAutoBufferedPaintDC dc(canvas_);
  dc.SetBackground(wxBrush(GetBackgroundColour()));
  dc.Clear();
  for (const auto& control : form_.Controls()) {
    const ControlSize size = control->size.Get();
    if (control->hasWindow || size.width <= 0 || size.height <= 0) continue;
    const wxBitmap picture = PictureOf(*control, size);
    if (control->problem.Get().empty()) {
      dc.DrawBitmap(picture, 0, 0);
    } else {
      dc.DrawText("error " + ToWx(control->problem.Get()), FromDIP(8), FromDIP(8));
    }
  }
}

void TestControlWindow::OnMouse(wxMouseEvent& event) {
  event.Skip();
  if (event.ButtonDown()) canvas_->SetFocus();
  if (HostedControl* front = Front()) front->Pointer(EventOf(event));
}

}  // namespace gorbex::ui
