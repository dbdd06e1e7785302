#pragma once

#include <wx/dialog.h>
#include <wx/sizer.h>

#include <functional>
#include <string>
#include <vector>

#include "core/command.h"
#include "core/property.h"
#include "core/registry_tools.h"
#include "core/signal.h"
#include "ui/field_binding.h"

namespace gorbex::ui {

/// A form that stays open beside the main window and follows whether its state is visible. After it
/// was placed once, it stays where the user puts it.
class FormWindow : public wxDialog {
 public:
  /// `unload` is called when the user closes the window; it makes the state invisible.
  FormWindow(wxWindow* parent, const wxString& title, const wxString& name, Property<bool>& visible,
             const std::function<void()>& unload);
  ~FormWindow() override;

 protected:
  /// Gives the window its first place and size, unless those of the last time are remembered.
  virtual void Place() { CentreOnParent(); }

  /// Called once, when the window has its first size.
  virtual void HasPlace() {}

  /// Remembers place and size for the next time, beside the main window's position. `part` names
  /// the window; the registry must outlive it.
  void RememberPlace(RegistryTools& registry, const std::string& part) {
    registry_ = &registry;
    part_ = part;
  }

  /// A place at the foot of the main window, so that a project it leads to is in sight.
  void PlaceAtFoot(int height);

  /// Takes the contents. The window never becomes smaller than they need, nor than `least` (DIP).
  void SetContents(wxSizer* contents, const wxSize& least);

  /// As SetContents, for one content above the foot of the window.
  void SetContents(wxWindow* content, wxSizer* foot, const wxSize& least);

  /// The row at the foot of the window: a text of the state, shortened where it has no room, and
  /// buttons for commands. Null for no text.
  [[nodiscard]] wxSizer* Foot(Property<std::string>* text, const std::vector<Command*>& commands);

  /// A button in a row, at a distance from the one before.
  void AddButton(wxSizer& row, const wxString& label, const wxString& name,
                 const std::function<void()>& press);

  FieldBinding fields_;
  Subscriptions subscriptions_;

 private:
  void ShowAsTold(bool visible);
  [[nodiscard]] bool RestorePlace();
  void StorePlace();

  const Property<bool>& visible_;
  RegistryTools* registry_ = nullptr;  ///< null while no place is remembered
  std::string part_;
  bool isPlaced_ = false;
};

}  // namespace gorbex::ui
