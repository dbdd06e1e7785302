#pragma once

#include <wx/panel.h>

#include <vector>

#include "ui/command_ids.h"

namespace gorbex::ui {

/// The hint of a pane that has nothing to show: a sentence, and buttons for what to do first.
class EmptyHint : public wxPanel {
 public:
  /// The commands must outlive the hint.
  EmptyHint(wxWindow* parent, CommandIds& ids, const wxString& text,
            const std::vector<Command*>& commands = {});
};

}  // namespace gorbex::ui
