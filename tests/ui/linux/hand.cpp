#include "tests/ui/hand.h"

#include <wx/process.h>
#include <wx/utils.h>

#include "tests/ui/user.h"

namespace gorbex::test {

void DragByHand(const wxPoint& start, const wxPoint& end) {
  constexpr int kSteps = 10;
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
  if (wxExecute(command, wxEXEC_ASYNC, &hand) <= 0) return;
  static_cast<void>(User::Sees([&] { return isOver; }));
}

}  // namespace gorbex::test
