#include "ui/log_pane.h"

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>

#include <cstddef>
#include <string_view>

#include "ui/caption_divider.h"
#include "ui/empty_hint.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

// The toolkit takes minutes to lay out a long line that it cannot break, and seconds for each ten
// megabytes of any lines. Each failure lays out all of them again.
std::string Excerpt(const std::string& log) {
  constexpr std::size_t kMost = 1'000'000;
  constexpr std::size_t kLongestLine = 1000;
  std::string shown;
  std::size_t length = 0;
  for (const char letter : std::string_view(log).substr(0, kMost)) {
    if (letter == '\n') length = 0;
    if (++length > kLongestLine) {
      shown += '\n';
      length = 1;
    }
    shown += letter;
  }
  return log.size() > kMost ? shown + "..." : shown;
}

}  // namespace

LogPane::LogPane(wxWindow* parent, CommandIds& ids, TextBox& state)
    : wxPanel(parent),
      text_(new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY, wxDefaultValidator, "txtLogFile")),
      hint_(
          new EmptyHint(this, ids,
                        "The compiler told of no build. What it said instead is in VBResult.log,\n"
                        "in the program's folder.",
                        {})),
      subscription_(
          state.text.changed.Connect([this](const std::string& text) { ShowText(text); })) {
  text_->SetFont(wxFontInfo(text_->GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
  auto* close = wxBitmapButton::NewCloseButton(this, wxID_ANY);
  close->SetToolTip("Hide the compiler log");
  close->Bind(wxEVT_BUTTON, [&state](wxCommandEvent&) { state.visible.Set(false); });
  auto* head = new wxBoxSizer(wxHORIZONTAL);
  head->Add(new CaptionDivider(this, "Failed Projects"), wxSizerFlags(1).CentreVertical());
  head->Add(close, wxSizerFlags().CentreVertical());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(head, wxSizerFlags().Expand());
  sizer->Add(text_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4)));
  sizer->Add(hint_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4)));
  SetSizer(sizer);
  ShowText(state.text.Get());
}

void LogPane::ShowText(const std::string& text) {
  text_->ChangeValue(ToWx(Excerpt(text)));
  text_->Show(!text.empty());
  hint_->Show(text.empty());
  Layout();
}

}  // namespace gorbex::ui
