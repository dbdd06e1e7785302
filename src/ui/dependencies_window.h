#pragma once

#include <wx/splitter.h>

#include <optional>
#include <string>
#include <vector>

#include "analysis/dependency_picture.h"
#include "core/registry_tools.h"
#include "ui/command_ids.h"
#include "ui/dependency_canvas.h"
#include "ui/field_binding.h"
#include "ui/find_bar.h"
#include "ui/form_window.h"
#include "ui/pane.h"
#include "ui/state_list.h"

namespace gorbex::ui {

/// The picture of the dependencies beside a list that says the same, over their state. It is where
/// it was the last time.
class DependenciesWindow : public FormWindow {
 public:
  /// All must outlive the window.
  DependenciesWindow(wxWindow* parent, frmDependencies& form, DependencyPicture& picture,
                     RegistryTools& registry, CommandIds& ids);

  /// Keeps its place for the next time.
  void StorePlace();

 private:
  [[nodiscard]] Pane* PicturePane(CommandIds& ids);
  [[nodiscard]] Pane* ListPane(CommandIds& ids);
  [[nodiscard]] wxSizer* Legend();
  [[nodiscard]] wxSizer* Buttons();
  void BindKeys();
  void FollowState();
  void ShowEmpty();
  void Place() override;
  [[nodiscard]] wxSize FirstSize() const;
  [[nodiscard]] std::optional<wxRect> StoredPlace() const;

  frmDependencies& form_;
  DependencyPicture& picture_;
  RegistryTools& registry_;
  wxSplitterWindow* columns_;
  Pane* picturePane_ = nullptr;
  Pane* listPane_ = nullptr;
  DependencyCanvas* canvas_ = nullptr;
  StateList* list_ = nullptr;
  FindBar* find_ = nullptr;
  std::optional<std::size_t> revealed_;  ///< the selected project that was scrolled to
  bool isPlaced_ = false;                ///< from then on it is where the user puts it
  FieldBinding fields_;
  std::vector<Subscription> subscriptions_;
};

}  // namespace gorbex::ui
