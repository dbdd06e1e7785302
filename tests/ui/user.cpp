#include "tests/ui/user.h"

#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/evtloop.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <cstring>
#include <memory>
#include <utility>

#include "tests/ui/hand.h"
#include "ui/event_loop_pump.h"

namespace gorbex::test {
namespace {

constexpr long kPatience = 10000;
constexpr long kQuiet = 100;

wxWindow* FindShown(wxWindow* below, const wxString& name) {
  if (!below->IsShown()) return nullptr;
  if (below->GetName() == name) return below;
  for (wxWindow* child : below->GetChildren()) {
    if (wxWindow* found = FindShown(child, name)) return found;
  }
  return nullptr;
}

}  // namespace

bool User::Sees(const std::function<bool()>& condition) {
  const wxStopWatch watch;
  while (watch.Time() < kPatience) {
    ui::EventLoopPump().DoEvents();
    if (condition()) return true;
    wxMilliSleep(2);
  }
  return false;
}

// Events travel through the display's server, so quiet is only known after a while.
void User::Waits() {
  const wxStopWatch watch;
  while (watch.Time() < kQuiet) {
    ui::EventLoopPump().DoEvents();
    wxMilliSleep(2);
  }
}

void User::Presses(int key, int modifiers) {
  simulator_.Char(key, modifiers);
  Waits();
}

void User::PressesInMenu(int key) {
  simulator_.Char(key);
}

void User::Types(const char* text) {
  constexpr std::size_t kLettersInAWait = 3;
  simulator_.Text(text);
  for (std::size_t i = 0; i <= std::strlen(text); i += kLettersInAWait) Waits();
}

void User::Clicks(wxWindow& control) {
  const wxSize size = control.GetClientSize();
  Clicks(control, wxPoint(size.x / 2, size.y / 2));
}

void User::Clicks(wxWindow& control, const wxPoint& at) {
  simulator_.MouseMove(control.ClientToScreen(at));
  Waits();
  simulator_.MouseClick();
  Waits();
}

void User::Drags(wxWindow& from, const wxPoint& at, wxWindow& to) {
  const wxSize size = to.GetClientSize();
  DragByHand(from.ClientToScreen(at), to.ClientToScreen(wxPoint(size.x / 2, size.y / 2)));
  Waits();
}

// A native dialog is not a window of the toolkit, so the test waits until it is surely there.
void User::Then(std::function<void()> act) {
  constexpr int kUntilItStands = 400;
  auto* timer = new wxTimer;
  timer->Bind(wxEVT_TIMER, [timer, act = std::move(act)](wxTimerEvent&) {
    wxTheApp->CallAfter([timer] { delete timer; });
    const auto now = act;
    now();
  });
  timer->StartOnce(kUntilItStands);
}

wxString Clipboard() {
  const wxClipboardLocker lock;
  wxTextDataObject text;
  wxTheClipboard->GetData(text);
  return text.GetText();
}

wxWindow* Shown(const char* name) {
  for (wxWindow* top : wxTopLevelWindows) {
    if (wxWindow* found = FindShown(top, name)) return found;
  }
  return nullptr;
}

}  // namespace gorbex::test
