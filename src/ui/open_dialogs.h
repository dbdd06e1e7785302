#pragma once

#include <wx/dialog.h>
#include <wx/modalhook.h>

#include <vector>

namespace gorbex::ui {

/// Knows which dialogs wait for the user's answer, the system's own dialogs among them.
class OpenDialogs : public wxModalDialogHook {
 public:
  OpenDialogs() { Register(); }

  [[nodiscard]] bool Any() const { return !open_.empty(); }

  /// While it is on, no dialog appears: each is answered as by its Escape key. Switching it on
  /// answers the open ones, the last first; one that may not be closed yet stays open.
  void Dismiss(bool on) {
    isDismissing_ = on;
    if (!on) return;
    const auto open = open_;
    for (auto dialog = open.rbegin(); dialog != open.rend(); ++dialog) (*dialog)->Close();
  }
  [[nodiscard]] bool AreDismissed() const { return isDismissing_; }

 protected:
  int Enter(wxDialog* dialog) override {
    if (isDismissing_) return wxID_CANCEL;
    open_.push_back(dialog);
    return wxID_NONE;
  }
  void Exit(wxDialog* dialog) override { std::erase(open_, dialog); }

 private:
  std::vector<wxDialog*> open_;  ///< the last one is in front
  bool isDismissing_ = false;
};

}  // namespace gorbex::ui
