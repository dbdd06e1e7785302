#pragma once

#include <wx/dialog.h>
#include <wx/textctrl.h>

#include <functional>

#include "core/dialogs.h"

namespace gorbex::ui {

/// Asks for a file or a folder: its path is typed, or chosen with the system's choosers.
class FileOrFolderWindow : public wxDialog {
 public:
  /// One of the system's choosers: the host's path, or an empty one.
  using Chooser = std::function<wxString()>;

  FileOrFolderWindow(wxWindow* parent, const FileChoice& choice, const Chooser& file,
                     const Chooser& folder);

  /// As it was typed or chosen.
  [[nodiscard]] wxString Path() const { return path_->GetValue(); }

 private:
  [[nodiscard]] wxSizer* Choosers(const Chooser& file, const Chooser& folder);

  wxTextCtrl* path_;
};

}  // namespace gorbex::ui
