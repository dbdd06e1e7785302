#include "ui/command_ids.h"

#include <utility>

namespace gorbex::ui {

int CommandIds::IdOf(Command& command) {
  const auto [entry, isNew] = ids_.try_emplace(&command);
  if (!isNew) return entry->second;
  entry->second = wxWindow::NewControlId();
  const int id = entry->second;
  frame_.Bind(
      wxEVT_MENU,
      [this, &command](wxCommandEvent&) {
        if (IsPossible(command)) command.Execute();
      },
      id);
  frame_.Bind(
      wxEVT_UPDATE_UI, [this, &command](wxUpdateUIEvent& event) { OnUpdate(command, event); }, id);
  return id;
}

void CommandIds::OfferOnlyWhen(Command& command, std::function<bool()> possible) {
  possible_.insert_or_assign(&command, std::move(possible));
}

bool CommandIds::IsPossible(const Command& command) const {
  const auto found = possible_.find(&command);
  return found == possible_.end() || found->second();
}

void CommandIds::OnUpdate(const Command& command, wxUpdateUIEvent& event) {
  event.Enable(command.enabled.Get() && IsPossible(command));
  if (event.IsCheckable()) event.Check(command.checked.Get());
}

}  // namespace gorbex::ui
