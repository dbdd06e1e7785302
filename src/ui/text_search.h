#pragma once

#include <wx/textctrl.h>

#include "analysis/project_search.h"

namespace gorbex::ui {

/// Selects the next place of a text in a text control after the selection, the one before it, or
/// the one that begins with the selection, in any letter case. After the last place comes the
/// first.
[[nodiscard]] ProjectSearch::Hit FindText(wxTextCtrl& control, const wxString& wanted,
                                          ProjectSearch::Direction direction);

}  // namespace gorbex::ui
