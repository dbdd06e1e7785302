#include "ui/message_window.h"

#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statbmp.h>
#include <wx/tokenzr.h>

#include <algorithm>
#include <array>

#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

constexpr std::size_t kLongest = std::size_t{64} * 1024;

struct Choice {
  Buttons buttons;
  wxWindowID id;
  const char* label;
  Answer answer;
};

// Ids say where a button has its place. For each set of buttons the one that Return presses comes
// first.
constexpr Choice kChoices[] = {
    {Buttons::Ok, wxID_OK, "&OK", Answer::Ok},
    {Buttons::OkCancel, wxID_OK, "&OK", Answer::Ok},
    {Buttons::OkCancel, wxID_CANCEL, "&Cancel", Answer::Cancel},
    {Buttons::YesNo, wxID_YES, "&Yes", Answer::Yes},
    {Buttons::YesNo, wxID_NO, "&No", Answer::No},
    {Buttons::AbortRetryIgnore, wxID_YES, "&Retry", Answer::Retry},
    {Buttons::AbortRetryIgnore, wxID_NO, "&Ignore", Answer::Ignore},
    {Buttons::AbortRetryIgnore, wxID_CANCEL, "&Abort", Answer::Abort},
};

// In the order of the icons.
constexpr std::array kArts = {"", wxART_QUESTION, wxART_WARNING, wxART_ERROR};

wxString ShownText(const std::string& text) {
  wxString shown = ToWx(Excerpt(text, kLongest));
  shown.Replace("\r\n", "\n");
  return shown;
}

// Of the whole text, wrapped; words make lines a little shorter than they could be.
wxSize WrappedSize(const wxWindow& in, const wxString& text, int widest) {
  int width = 0;
  int lines = 0;
  wxStringTokenizer rest(text, "\n", wxTOKEN_RET_EMPTY_ALL);
  while (rest.HasMoreTokens()) {
    const int length = in.GetTextExtent(rest.GetNextToken()).x;
    width = std::max(width, std::min(length, widest));
    lines += 1 + length * 8 / (widest * 7);
  }
  return {width, lines * in.GetTextExtent("Ag").y};
}

}  // namespace

MessageWindow::MessageWindow(wxWindow* parent, const wxString& caption, const Message& message)
    : wxDialog(parent, wxID_ANY, caption) {
  const int margin = FromDIP(kMargin);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  const wxArtID art = kArts.at(static_cast<std::size_t>(message.icon));
  if (!art.empty()) {
    auto* icon =
        new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmapBundle(art, wxART_MESSAGE_BOX),
                           wxDefaultPosition, wxDefaultSize, 0, "icon");
    row->Add(icon, wxSizerFlags().Top().Border(wxRIGHT, margin));
  }
  row->Add(MakeText(ShownText(message.text)), wxSizerFlags(1).CentreVertical());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(row, wxSizerFlags(1).Expand().Border(wxALL, margin));
  sizer->Add(MakeButtons(message.buttons), wxSizerFlags().Right().Border(wxALL, margin));
  SetSizerAndFit(sizer);
  Centre();
  // Without a button for it the toolkit would let the key do nothing.
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    event.GetKeyCode() == WXK_ESCAPE ? static_cast<void>(Close()) : event.Skip();
  });
}

wxTextCtrl* MessageWindow::MakeText(const wxString& text) {
  const wxSize limit = FromDIP(wxSize(440, 300));
  wxSize size = WrappedSize(*this, text, limit.x);
  const bool scrolls = size.y > limit.y;
  auto* shown = new wxTextCtrl(this, wxID_ANY, text, wxDefaultPosition, wxDefaultSize,
                               wxTE_MULTILINE | wxTE_READONLY | wxBORDER_NONE |
                                   (scrolls ? 0 : static_cast<int>(wxTE_NO_VSCROLL)),
                               wxDefaultValidator, "message");
  shown->SetBackgroundColour(GetBackgroundColour());
  size.IncBy(FromDIP(wxSize(16, 4)));
  shown->SetMinSize({size.x, std::min(size.y, limit.y)});
  return shown;
}

wxSizer* MessageWindow::MakeButtons(Buttons buttons) {
  auto* sizer = new wxStdDialogButtonSizer;
  bool isFirst = true;
  for (const Choice& choice : kChoices) {
    if (choice.buttons != buttons) continue;
    auto* button = new wxButton(this, choice.id, choice.label);
    button->Bind(wxEVT_BUTTON, [this, &choice](wxCommandEvent&) {
      answer_ = choice.answer;
      EndModal(choice.id);
    });
    sizer->AddButton(button);
    if (!isFirst) continue;
    button->SetDefault();
    button->SetFocus();
    isFirst = false;
  }
  sizer->Realize();
  return sizer;
}

std::optional<Answer> MessageWindow::Ask() {
  ShowModal();
  return answer_;
}

}  // namespace gorbex::ui
