#pragma once

#include <wx/arrstr.h>
#include <wx/window.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/dialogs.h"
#include "platform/host.h"
#include "ui/chooser_folders.h"

namespace gorbex::ui {

/// The program's questions in windows of the toolkit.
class WindowDialogs : public Dialogs {
 public:
  /// The host must outlive this object.
  explicit WindowDialogs(const Host& host) : host_(host) {}

  /// The window above which dialogs appear; it is shown before the first. Null for none.
  void SetParent(wxWindow* parent) { parent_ = parent; }

  /// Asks for the path of the open build project, beside which choosers begin; empty for none.
  void SetBuildProject(std::function<std::string()> path) { buildProject_ = std::move(path); }

  Answer Ask(const Message& message) override;
  std::optional<std::string> OpenFile(const FileChoice& choice) override;
  std::vector<std::string> OpenFiles(const FileChoice& choice) override;
  std::optional<std::string> OpenFileOrFolder(const FileChoice& choice) override;
  std::optional<std::string> SaveFile(const FileChoice& choice) override;
  std::optional<std::string> BrowseForDir(const std::string& title) override;
  std::optional<std::string> Input(const std::string& prompt, const std::string& initial) override;
  void ShowOptions(frmOptions& form) override;
  void ShowLogin(frmLogin& form) override;
  void ShowLabel(frmLabel& form) override;

 private:
  [[nodiscard]] wxWindow* Parent();
  void ShowParent();
  [[nodiscard]] wxString FolderFor(const std::string& chooser);
  // The choices in the system's choosers; empty when these were cancelled.
  [[nodiscard]] wxArrayString ChooseFiles(const FileChoice& choice, long style);
  [[nodiscard]] wxString ChooseFile(const FileChoice& choice, long style);
  [[nodiscard]] wxString ChooseFolder(const std::string& title);
  // The program's path; nothing, and the user is told, when it has none.
  [[nodiscard]] std::optional<std::string> Chosen(const wxString& hostPath);
  [[nodiscard]] std::optional<std::string> Typed(const wxString& path);
  void TellUnusable(const wxString& path);
  [[nodiscard]] std::optional<std::string> ChosenWithExtension(const wxString& hostPath,
                                                               const std::string& filter);

  const Host& host_;
  wxWindow* parent_ = nullptr;
  std::function<std::string()> buildProject_;
  ChooserFolders folders_;
};

}  // namespace gorbex::ui
