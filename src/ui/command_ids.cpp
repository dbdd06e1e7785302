#include "ui/command_ids.h"

namespace gorbex::ui {

int CommandIds::IdOf(Command& command) {
  const auto [entry, isNew] = ids_.try_emplace(&command);
  if (!isNew) return entry->second;
  entry->second = wxWindow::NewControlId();
  const int id = entry->second;
  frame_.Bind(
      wxEVT_MENU,
      [&command](wxCommandEvent&) {
        if (command.IsPossible()) command.Execute();
      },
      id);
  frame_.Bind(
      wxEVT_UPDATE_UI,
      [&command](wxUpdateUIEvent& event) {
        event.Enable(command.IsPossible());
        if (event.IsCheckable()) event.Check(command.checked.Get());
      },
      id);
  return id;
}

}  // namespace gorbex::ui
