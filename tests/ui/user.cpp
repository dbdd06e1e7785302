#include "tests/ui/user.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/process.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>
#include <wx/utils.h>

#include <memory>
#include <utility>

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

void User::Types(const char* text) {
  simulator_.Text(text);
  Waits();
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

// The toolkit leads a drag in a loop of its own, so a hand outside the program moves the mouse.
void User::Drags(wxWindow& from, const wxPoint& at, wxWindow& to) {
  constexpr int kSteps = 10;
  const wxPoint start = from.ClientToScreen(at);
  const wxSize size = to.GetClientSize();
  const wxPoint end = to.ClientToScreen(wxPoint(size.x / 2, size.y / 2));
  wxString command = "xdotool";
  for (int step = 0; step <= kSteps; ++step) {
    const wxPoint point = start + (end - start) * step / kSteps;
    command += wxString::Format(" mousemove %d %d sleep 0.03", point.x, point.y);
    if (step == 0) command += " mousedown 1 sleep 0.05";
  }
  command += " sleep 0.05 mouseup 1 sleep 0.1";
  bool isOver = false;
  wxProcess hand;
  hand.Bind(wxEVT_END_PROCESS, [&](wxProcessEvent&) { isOver = true; });
  if (wxExecute(command, wxEXEC_ASYNC, &hand) > 0) static_cast<void>(Sees([&] { return isOver; }));
  Waits();
}

// A native dialog is no window of the toolkit, so time has to tell that it stands.
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

wxWindow* Shown(const char* name) {
  for (wxWindow* top : wxTopLevelWindows) {
    if (wxWindow* found = FindShown(top, name)) return found;
  }
  return nullptr;
}

}  // namespace gorbex::test
