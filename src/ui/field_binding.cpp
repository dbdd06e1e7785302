#include "ui/field_binding.h"

#include "ui/text_conversion.h"

namespace gorbex::ui {

void FieldBinding::Join(wxCheckBox& control, CheckBox& state) {
  control.SetValue(state.value.Get());
  control.Enable(state.enabled.Get());
  subscriptions_.Add(state.value.changed, [&control](bool value) { control.SetValue(value); });
  subscriptions_.Add(state.enabled.changed, [&control](bool value) { control.Enable(value); });
  control.Bind(wxEVT_CHECKBOX,
               [&control, &state](wxCommandEvent&) { state.value.Set(control.GetValue()); });
}

void FieldBinding::Join(wxTextCtrl& control, TextBox& state) {
  control.ChangeValue(ToWx(state.text.Get()));
  control.Enable(state.enabled.Get());
  subscriptions_.Add(state.text.changed, [&control](const std::string& text) {
    // Writing back what was just typed would move the cursor.
    if (FromWx(control.GetValue()) != text) control.ChangeValue(ToWx(text));
  });
  subscriptions_.Add(state.enabled.changed, [&control](bool value) { control.Enable(value); });
  control.Bind(wxEVT_TEXT,
               [&control, &state](wxCommandEvent&) { state.text.Set(FromWx(control.GetValue())); });
}

void FieldBinding::Join(wxSpinCtrl& control, Property<std::int32_t>& state) {
  control.SetValue(state.Get());
  subscriptions_.Add(state.changed, [&control](std::int32_t value) { control.SetValue(value); });
  control.Bind(wxEVT_SPINCTRL, [&state](wxSpinEvent& event) { state.Set(event.GetPosition()); });
}

void FieldBinding::Join(wxButton& control, Command& command) {
  control.Enable(command.enabled.Get());
  subscriptions_.Add(command.enabled.changed, [&control](bool value) { control.Enable(value); });
  control.Bind(wxEVT_BUTTON, [&command](wxCommandEvent&) { command.Execute(); });
}

wxTextCtrl* FieldBinding::NewField(wxWindow* parent, const wxString& name, TextBox& state,
                                   long style, const wxSize& size) {
  auto* field = new wxTextCtrl(parent, wxID_ANY, {}, wxDefaultPosition, size, style,
                               wxDefaultValidator, name);
  Join(*field, state);
  return field;
}

wxButton* FieldBinding::NewButton(wxWindow* parent, Command& command, wxWindowID id) {
  const wxString label = id == wxID_ANY ? ToWx(command.caption.Get()) : wxString();
  auto* button = new wxButton(parent, id, label, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, ToWx(command.Name()));
  Join(*button, command);
  return button;
}

}  // namespace gorbex::ui
