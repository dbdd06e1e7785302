#pragma once

#include <wx/modalhook.h>

namespace gorbex::ui {

/// Knows whether a dialog waits for the user's answer, the system's own dialogs among them.
class OpenDialogs : public wxModalDialogHook {
 public:
  OpenDialogs() { Register(); }

  [[nodiscard]] bool Any() const { return count_ > 0; }

 protected:
  int Enter(wxDialog* /*dialog*/) override {
    ++count_;
    return wxID_NONE;
  }
  void Exit(wxDialog* /*dialog*/) override { --count_; }

 private:
  int count_ = 0;
};

}  // namespace gorbex::ui
