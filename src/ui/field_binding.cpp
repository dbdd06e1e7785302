#include "ui/field_binding.h"

#include "ui/text_conversion.h"

namespace gorbex::ui {

void FieldBinding::Join(wxCheckBox& control, CheckBox& state) {
  control.SetValue(state.value.Get());
  control.Enable(state.enabled.Get());
  subscriptions_.push_back(
      state.value.changed.Connect([&control](const bool& value) { control.SetValue(value); }));
  subscriptions_.push_back(
      state.enabled.changed.Connect([&control](const bool& value) { control.Enable(value); }));
  control.Bind(wxEVT_CHECKBOX,
               [&control, &state](wxCommandEvent&) { state.value.Set(control.GetValue()); });
}

void FieldBinding::Join(wxTextCtrl& control, TextBox& state) {
  control.ChangeValue(ToWx(state.text.Get()));
  control.Enable(state.enabled.Get());
  subscriptions_.push_back(state.text.changed.Connect([&control](const std::string& text) {
    // Writing back what was just typed would move the cursor.
    if (FromWx(control.GetValue()) != text) control.ChangeValue(ToWx(text));
  }));
  subscriptions_.push_back(
      state.enabled.changed.Connect([&control](const bool& value) { control.Enable(value); }));
  control.Bind(wxEVT_TEXT,
               [&control, &state](wxCommandEvent&) { state.text.Set(FromWx(control.GetValue())); });
}

void FieldBinding::Join(wxSpinCtrl& control, Property<std::int32_t>& state) {
  control.SetValue(state.Get());
  subscriptions_.push_back(
      state.changed.Connect([&control](std::int32_t value) { control.SetValue(value); }));
  control.Bind(wxEVT_SPINCTRL, [&state](wxSpinEvent& event) { state.Set(event.GetPosition()); });
}

void FieldBinding::Join(wxButton& control, Command& command) {
  control.Enable(command.enabled.Get());
  subscriptions_.push_back(
      command.enabled.changed.Connect([&control](const bool& value) { control.Enable(value); }));
  control.Bind(wxEVT_BUTTON, [&command](wxCommandEvent&) { command.Execute(); });
}

}  // namespace gorbex::ui
