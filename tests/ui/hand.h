#pragma once

#include <wx/gdicmn.h>

namespace gorbex::test {

/// Drags with the left button from one place of the screen to another, in steps. The toolkit leads
/// a drag in a separate loop, so the hand that moves the mouse is outside the program's one
/// thread; the program works on meanwhile.
void DragByHand(const wxPoint& start, const wxPoint& end);

}  // namespace gorbex::test
