#include "ui/event_loop_pump.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/stopwatch.h>

namespace gorbex::ui {
namespace {

// The loop's own dispatching instead of the toolkit's yield, which refuses to nest.
void Handle(wxEventLoopBase& loop) {
  // The caller must get to check its wait again, even with very many events.
  constexpr long kLongestMilliseconds = 100;
  const wxStopWatch watch;
  while (loop.Pending() && watch.Time() < kLongestMilliseconds) loop.Dispatch();
  wxTheApp->ProcessPendingEvents();
  loop.ProcessIdle();
}

}  // namespace

void EventLoopPump::DoEvents() {
  // A dialog ends the loop that runs it, which therefore has to stay the active one.
  if (auto* active = wxEventLoopBase::GetActive()) {
    Handle(*active);
    return;
  }
  wxGUIEventLoop loop;
  const wxEventLoopActivator activator(&loop);
  Handle(loop);
}

}  // namespace gorbex::ui
