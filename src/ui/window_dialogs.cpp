#include "ui/window_dialogs.h"

#include <wx/app.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/msgdlg.h>
#include <wx/stopwatch.h>
#include <wx/textdlg.h>
#include <wx/utils.h>

#include "core/procedure.h"
#include "core/text.h"
#include "ui/event_loop_pump.h"
#include "ui/label_window.h"
#include "ui/login_window.h"
#include "ui/options_window.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

long StyleOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::Ok:
      return wxOK;
    case Buttons::OkCancel:
      return wxOK | wxCANCEL;
    case Buttons::YesNo:
      return wxYES_NO;
    case Buttons::AbortRetryIgnore:
      return wxYES_NO | wxCANCEL;
  }
  return wxOK;
}

long StyleOf(MessageIcon icon) {
  switch (icon) {
    case MessageIcon::None:
      return wxICON_NONE;
    case MessageIcon::Question:
      return wxICON_QUESTION;
    case MessageIcon::Exclamation:
      return wxICON_WARNING;
    case MessageIcon::CriticalStop:
      return wxICON_ERROR;
  }
  return wxICON_NONE;
}

// Closing the box by its frame counts as the last answer that each set of buttons has.
Answer AnswerOf(Buttons buttons, int result) {
  switch (buttons) {
    case Buttons::Ok:
      return Answer::Ok;
    case Buttons::OkCancel:
      return result == wxID_OK ? Answer::Ok : Answer::Cancel;
    case Buttons::YesNo:
      return result == wxID_YES ? Answer::Yes : Answer::No;
    case Buttons::AbortRetryIgnore:
      if (result == wxID_YES) return Answer::Retry;
      return result == wxID_NO ? Answer::Ignore : Answer::Abort;
  }
  return Answer::Cancel;
}

wxString MessageText(const std::string& text) {
  constexpr std::size_t kLongest = 2000;
  wxString shown = ToWx(text.size() > kLongest ? text.substr(0, kLongest) + "..." : text);
  shown.Replace("\r\n", "\n");
  // A long path may be broken behind each of its folders.
  shown.Replace("\\", wxString("\\") + wxUniChar(0x200B));
  return shown;
}

wxString TitleOf(const std::string& title, const wxString& otherwise) {
  return title.empty() ? otherwise : ToWx(title);
}

wxString WildcardOf(const std::string& filter) {
  if (filter.empty()) return wxFileSelectorDefaultWildcardStr;
  return ToWx(filter.find('|') == std::string::npos ? filter + "|*" : filter);
}

}  // namespace

wxWindow* WindowDialogs::Parent() {
  if (parent_ != nullptr && !parent_->IsShown()) ShowParent();
  // The system's own dialogs run a loop in which the windows behind them never come to rest.
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
  const std::string& caption = message.caption;
  wxMessageDialog box(Parent(), MessageText(message.text),
                      TitleOf(caption, wxString(std::string(kApplicationTitle))),
                      StyleOf(message.buttons) | StyleOf(message.icon) | wxCENTRE);
  if (message.buttons == Buttons::AbortRetryIgnore) {
    box.SetYesNoCancelLabels("&Retry", "&Ignore", "&Abort");
  }
  return AnswerOf(message.buttons, box.ShowModal());
}

std::optional<std::string> WindowDialogs::Chosen(const wxString& hostPath) {
  auto path = paths_.ProgramPath(hostPath.utf8_string());
  if (!path) {
    Show({"The path " + FromWx(hostPath) + " cannot be named by a path of the program.",
          Buttons::Ok, MessageIcon::Exclamation});
  }
  return path;
}

std::optional<std::string> WindowDialogs::ChooseFile(const FileChoice& choice, long style) {
  const bool isPattern = choice.name.find('*') != std::string::npos;
  if (lastFolder_.empty()) lastFolder_ = wxString::FromUTF8(paths_.FirstFolder());
  wxFileDialog dialog(Parent(), TitleOf(choice.title, "Save"), lastFolder_,
                      isPattern ? wxString() : ToWx(choice.name), WildcardOf(choice.filter), style);
  if (dialog.ShowModal() != wxID_OK) return std::nullopt;
  lastFolder_ = dialog.GetDirectory();
  if ((style & wxFD_SAVE) == 0) return Chosen(dialog.GetPath());
  return ChosenWithExtension(dialog.GetPath(), WildcardOf(choice.filter));
}

// A name typed without its extension gets the one that the filter asks for. The file dialog has not
// asked about that file.
std::optional<std::string> WindowDialogs::ChosenWithExtension(const wxString& hostPath,
                                                              const wxString& wildcard) {
  wxFileName file(hostPath);
  const wxString pattern = wildcard.AfterFirst('|').BeforeFirst('|');
  if (file.HasExt() || !pattern.StartsWith("*.")) return Chosen(hostPath);
  file.SetExt(pattern.Mid(2));
  auto path = Chosen(file.GetFullPath());
  if (!path || !file.FileExists()) return path;
  const Answer answer = Show({*path + " exists already. Do you want to replace it?", Buttons::YesNo,
                              MessageIcon::Exclamation});
  return answer == Answer::Yes ? path : std::nullopt;
}

std::optional<std::string> WindowDialogs::OpenFile(const FileChoice& choice) {
  FileChoice wider = choice;
  // Another system's files end differently.
  if (choice.filter.find("*.*") == std::string::npos) wider.filter += "|All Files|*";
  return ChooseFile(wider, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
}

std::optional<std::string> WindowDialogs::SaveFile(const FileChoice& choice) {
  return ChooseFile(choice, wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
}

std::optional<std::string> WindowDialogs::BrowseForDir(const std::string& title) {
  if (lastFolder_.empty()) lastFolder_ = wxString::FromUTF8(paths_.FirstFolder());
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
