#pragma once

#include <wx/panel.h>

#include <utility>
#include <vector>

#include "core/main_window.h"

namespace gorbex::ui {

/// The properties of the selected project. It takes the keyboard while it has any; Ctrl+C copies
/// them.
class DetailsBlock : public wxPanel {
 public:
  DetailsBlock(wxWindow* parent, frmBuilder& window);

  [[nodiscard]] bool AcceptsFocus() const override;
  [[nodiscard]] bool AcceptsFocusFromKeyboard() const override { return AcceptsFocus(); }
  [[nodiscard]] bool AcceptsFocusRecursively() const override { return AcceptsFocus(); }

 private:
  void Copy() const;
  void AddRow(const wxString& caption, const wxString& name, Property<std::string>& label);

  const frmBuilder& window_;
  std::vector<std::pair<wxString, const Property<std::string>*>> rows_;  ///< by their captions
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
