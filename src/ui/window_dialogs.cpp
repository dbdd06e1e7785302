#include "ui/window_dialogs.h"

#include <wx/app.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/stopwatch.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include "core/procedure.h"
#include "core/text.h"
#include "ui/event_loop_pump.h"
#include "ui/label_window.h"
#include "ui/login_window.h"
#include "ui/message_window.h"
#include "ui/options_window.h"
#include "ui/system_window.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

wxString TitleOf(const std::string& title, const wxString& otherwise) {
  return title.empty() ? otherwise : ToWx(title);
}

// Texts and the patterns that follow them; a filter of only one text shows all files.
std::string WholeFilter(const std::string& filter) {
  return filter.find('|') == std::string::npos ? filter + "|*" : filter;
}

wxString WildcardOf(const std::string& filter) {
  if (filter.empty()) return wxFileSelectorDefaultWildcardStr;
  wxString wildcard;
  bool isPattern = false;
  for (const auto part : Split(WholeFilter(filter), '|')) {
    if (!wildcard.empty()) wildcard += '|';
    wildcard += ToWx(isPattern ? FilePattern(std::string(part)) : std::string(part));
    isPattern = !isPattern;
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

Answer WindowDialogs::Show(const Message& message) {
  MessageWindow box(Parent(), TitleOf(message.caption, wxString(std::string(kApplicationTitle))),
                    message);
  const bool isYesOrNo = message.buttons == Buttons::YesNo;
  return box.Ask().value_or(isYesOrNo ? Answer::Cancel : SafeAnswer(message.buttons));
}

std::optional<std::string> WindowDialogs::Chosen(const wxString& hostPath) {
  auto path = host_.ProgramPath(hostPath.utf8_string());
  if (!path) {
    Show({FromWx(hostPath) +
              " holds a character that is not in the system's code page, or in no Windows path.",
          Buttons::Ok, MessageIcon::Exclamation});
  }
  return path;
}

std::optional<std::string> WindowDialogs::ChooseFile(const FileChoice& choice, long style) {
  const bool isPattern = choice.name.find('*') != std::string::npos;
  if (lastFolder_.empty()) lastFolder_ = wxString::FromUTF8(host_.FirstFolder());
  wxFileDialog dialog(Parent(), TitleOf(choice.title, "Save"), lastFolder_,
                      isPattern ? wxString() : ToWx(choice.name), WildcardOf(choice.filter), style);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  lastFolder_ = dialog.GetDirectory();
  if ((style & wxFD_SAVE) == 0) return Chosen(dialog.GetPath());
  return ChosenWithExtension(dialog.GetPath(), choice.filter);
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
  const Answer answer = Show({*path + " exists already. Do you want to replace it?", Buttons::YesNo,
                              MessageIcon::Exclamation});
  return answer == Answer::Yes ? path : std::nullopt;
}

std::optional<std::string> WindowDialogs::OpenFile(const FileChoice& choice) {
  return ChooseFile(choice, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
}

std::optional<std::string> WindowDialogs::SaveFile(const FileChoice& choice) {
  return ChooseFile(choice, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
}

std::optional<std::string> WindowDialogs::BrowseForDir(const std::string& title) {
  if (lastFolder_.empty()) lastFolder_ = wxString::FromUTF8(host_.FirstFolder());
  wxDirDialog dialog(Parent(), ToWx(title), lastFolder_, wxDD_DEFAULT_STYLE);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  return Chosen(dialog.GetPath());
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
  OptionsWindow window(Parent(), form);
  window.ShowModal();
}

void WindowDialogs::ShowLogin(frmLogin& form) {
  LoginWindow window(Parent(), form);
  window.ShowModal();
}

void WindowDialogs::ShowLabel(frmLabel& form) {
  LabelWindow window(Parent(), form);
  window.ShowModal();
}

}  // namespace gorbex::ui
