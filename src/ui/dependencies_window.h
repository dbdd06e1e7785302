#pragma once

#include <wx/splitter.h>

#include <optional>

#include "analysis/dependency_picture.h"
#include "core/registry_tools.h"
#include "ui/command_ids.h"
#include "ui/dependency_canvas.h"
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
  ~DependenciesWindow() override;

 private:
  [[nodiscard]] Pane* PicturePane(CommandIds& ids);
  [[nodiscard]] Pane* ListPane(CommandIds& ids);
  [[nodiscard]] wxSizer* Legend();
  [[nodiscard]] wxSizer* Buttons();
  void FollowState();
  void ShowEmptyPanes();
  void Place() override;
  void HasPlace() override;
  void StorePanes();
  [[nodiscard]] wxSize FirstSize() const;

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
};

}  // namespace gorbex::ui
