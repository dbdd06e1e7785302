#include "ui/window_dialogs.h"

#include <wx/app.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/stopwatch.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include "core/file_tools.h"
#include "core/procedure.h"
#include "core/text.h"
#include "ui/event_loop_pump.h"
#include "ui/file_or_folder_window.h"
#include "ui/label_window.h"
#include "ui/login_window.h"
#include "ui/message_window.h"
#include "ui/options_window.h"
#include "ui/system_window.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr long kOpen = wxFD_OPEN | wxFD_FILE_MUST_EXIST;

wxString TitleOf(const std::string& title, const wxString& otherwise) {
  return title.empty() ? otherwise : ToWx(title);
}

// Texts and the patterns that follow them; a filter of only one text shows all files.
std::string WholeFilter(const std::string& filter) {
  return filter.find('|') == std::string::npos ? filter + "|*" : filter;
}

wxString WildcardOf(const std::string& filter) {
  if (filter.empty()) return wxFileSelectorDefaultWildcardStr;
  const std::string whole = WholeFilter(filter);
  const auto parts = Split(whole, '|');
  wxString wildcard;
  for (std::size_t i = 0; i + 1 < parts.size(); i += 2) {
    if (!wildcard.empty()) wildcard += '|';
    wildcard += ToWx(FileFilter(std::string(parts[i]), std::string(parts[i + 1])));
  }
  return wildcard;
}

}  // namespace

wxWindow* WindowDialogs::Parent() {
  if (parent_ != nullptr && !parent_->IsShown()) ShowParent();
  // The system's own dialogs run a loop in which the windows below them never become idle.
  wxTheApp->ProcessIdle();
  wxWindow* active = wxGetActiveWindow();
  wxWindow* top = active == nullptr ? nullptr : wxGetTopLevelParent(active);
  return top == nullptr || !top->IsShown() ? parent_ : top;
}

// A window that appeared after its dialog would cover it.
void WindowDialogs::ShowParent() {
  constexpr long kLongestMilliseconds = 1000;
  parent_->Show();
  const wxStopWatch watch;
  while (watch.Time() < kLongestMilliseconds && wxGetActiveWindow() == nullptr) {
    EventLoopPump().DoEvents();
    wxMilliSleep(5);
  }
}

Answer WindowDialogs::Ask(const Message& message) {
  MessageWindow box(Parent(), TitleOf(message.caption, wxString(std::string(kApplicationTitle))),
                    message);
  const bool isYesOrNo = message.buttons == Buttons::YesNo;
  return box.Ask().value_or(isYesOrNo ? Answer::Cancel : SafeAnswer(message.buttons));
}

void WindowDialogs::TellUnusable(const wxString& path) {
  Ask({FromWx(path) +
           " holds a character that is not in the system's code page, or in no Windows path.",
       Buttons::Ok, MessageIcon::Exclamation});
}

std::optional<std::string> WindowDialogs::Chosen(const wxString& hostPath) {
  auto path = host_.ProgramPath(hostPath.utf8_string());
  if (!path) TellUnusable(hostPath);
  return path;
}

std::optional<std::string> WindowDialogs::Typed(const wxString& path) {
  try {
    return host_.TypedPath(path.utf8_string());
  } catch (const RuntimeError&) {
    TellUnusable(path);
    return std::nullopt;
  }
}

wxString WindowDialogs::FolderFor(const std::string& chooser) {
  const std::string project = buildProject_ ? buildProject_() : "";
  const std::string beside = project.empty() ? "" : host_.HostPath(StripPath(project));
  const std::string folder = folders_.Begin(chooser, beside);
  return wxString::FromUTF8(folder.empty() ? host_.FirstFolder() : folder);
}

wxArrayString WindowDialogs::ChooseFiles(const FileChoice& choice, long style) {
  const bool isPattern = choice.name.find('*') != std::string::npos;
  wxFileDialog dialog(Parent(), TitleOf(choice.title, "Save"), FolderFor(choice.title),
                      isPattern ? wxString() : ToWx(choice.name), WildcardOf(choice.filter), style);
  wxArrayString paths;
  if (dialog.ShowModal() != wxID_OK) return paths;
  dialog.GetPaths(paths);
  if (!paths.empty()) folders_.Remember(choice.title, wxFileName(paths[0]).GetPath().utf8_string());
  return paths;
}

wxString WindowDialogs::ChooseFile(const FileChoice& choice, long style) {
  const wxArrayString paths = ChooseFiles(choice, style);
  return paths.empty() ? wxString() : paths[0];
}

wxString WindowDialogs::ChooseFolder(const std::string& title) {
  wxDirDialog dialog(Parent(), ToWx(title), FolderFor(title), wxDD_DEFAULT_STYLE);
  if (dialog.ShowModal() != wxID_OK) return {};
  folders_.Remember(title, dialog.GetPath().utf8_string());
  return dialog.GetPath();
}

// A name typed without its extension gets the one that the filter asks for. The file dialog has not
// asked about that file.
std::optional<std::string> WindowDialogs::ChosenWithExtension(const wxString& hostPath,
                                                              const std::string& filter) {
  wxFileName file(hostPath);
  const wxString pattern = ToWx(filter).AfterFirst('|').BeforeFirst('|');
  if (file.HasExt() || !pattern.StartsWith("*.")) return Chosen(hostPath);
  file.SetExt(pattern.Mid(2));
  auto path = Chosen(file.GetFullPath());
  if (!path || !file.FileExists()) return path;
  const Answer answer = Ask({*path + " exists already. Do you want to replace it?", Buttons::YesNo,
                             MessageIcon::Exclamation});
  return answer == Answer::Yes ? path : std::nullopt;
}

std::optional<std::string> WindowDialogs::OpenFile(const FileChoice& choice) {
  const wxString chosen = ChooseFile(choice, kOpen);
  return chosen.empty() ? std::nullopt : Chosen(chosen);
}

std::vector<std::string> WindowDialogs::OpenFiles(const FileChoice& choice) {
  std::vector<std::string> paths;
  for (const wxString& chosen : ChooseFiles(choice, kOpen | wxFD_MULTIPLE)) {
    if (auto path = Chosen(chosen)) paths.push_back(std::move(*path));
  }
  return paths;
}

std::optional<std::string> WindowDialogs::OpenFileOrFolder(const FileChoice& choice) {
  FileOrFolderWindow window(
      Parent(), choice, [&] { return ChooseFile(choice, kOpen); },
      [&] { return ChooseFolder(choice.title); });
  return window.ShowModal() == wxID_OK ? Typed(window.Path()) : std::nullopt;
}

std::optional<std::string> WindowDialogs::SaveFile(const FileChoice& choice) {
  const wxString chosen = ChooseFile(choice, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  return chosen.empty() ? std::nullopt : ChosenWithExtension(chosen, choice.filter);
}

std::optional<std::string> WindowDialogs::BrowseForDir(const std::string& title) {
  const wxString chosen = ChooseFolder(title);
  return chosen.empty() ? std::nullopt : Chosen(chosen);
}

std::optional<std::string> WindowDialogs::Input(const std::string& prompt,
                                                const std::string& initial) {
  wxString text = ToWx(prompt);
  text.Replace("\r\n", "\n");
  wxTextEntryDialog dialog(Parent(), text, wxString(std::string(kApplicationTitle)), ToWx(initial));
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return FromWx(dialog.GetValue());
}

void WindowDialogs::ShowOptions(frmOptions& form) {
  OptionsWindow(Parent(), form).ShowModal();
}

void WindowDialogs::ShowLogin(frmLogin& form) {
  LoginWindow(Parent(), form).ShowModal();
}

void WindowDialogs::ShowLabel(frmLabel& form) {
  LabelWindow(Parent(), form).ShowModal();
}

}  // namespace gorbex::ui
