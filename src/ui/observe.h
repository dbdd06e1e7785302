#pragma once

#include <wx/event.h>

namespace gorbex::ui {

/// Does something at each event of a kind, which then goes on to the others that wait for it.
template <class Kind, class Act>
void Observe(wxEvtHandler& handler, const Kind& kind, const Act& act) {
  handler.Bind(kind, [act](wxEvent& event) {
    event.Skip();
    act();
  });
}

}  // namespace gorbex::ui
