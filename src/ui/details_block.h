#pragma once

#include <wx/panel.h>

#include <vector>

#include "core/main_window.h"

namespace gorbex::ui {

/// The properties of the selected project.
class DetailsBlock : public wxPanel {
 public:
  DetailsBlock(wxWindow* parent, frmBuilder& window);

 private:
  void AddRow(const wxString& caption, const wxString& name, Property<std::string>& label);

  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
