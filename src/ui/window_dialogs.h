#pragma once

#include <wx/window.h>

#include <optional>
#include <string>

#include "core/dialogs.h"
#include "platform/host.h"

namespace gorbex::ui {

/// The program's questions in windows of the toolkit.
class WindowDialogs : public Dialogs {
 public:
  /// The host must outlive this object.
  explicit WindowDialogs(const Host& host) : host_(host) {}

  /// The window above which dialogs appear; it is shown before the first. Null for none.
  void SetParent(wxWindow* parent) { parent_ = parent; }

  Answer Show(const Message& message) override;
  std::optional<std::string> OpenFile(const FileChoice& choice) override;
  std::optional<std::string> SaveFile(const FileChoice& choice) override;
  std::optional<std::string> BrowseForDir(const std::string& title) override;
  std::optional<std::string> Input(const std::string& prompt, const std::string& initial) override;
  void ShowOptions(frmOptions& form) override;
  void ShowLogin(frmLogin& form) override;
  void ShowLabel(frmLabel& form) override;

 private:
  [[nodiscard]] wxWindow* Parent();
  void ShowParent();
  [[nodiscard]] std::optional<std::string> ChooseFile(const FileChoice& choice, long style);
  [[nodiscard]] std::optional<std::string> Chosen(const wxString& hostPath);
  [[nodiscard]] std::optional<std::string> ChosenWithExtension(const wxString& hostPath,
                                                               const std::string& filter);

  const Host& host_;
  wxWindow* parent_ = nullptr;
  wxString lastFolder_;
};

}  // namespace gorbex::ui
