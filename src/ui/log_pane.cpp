#include "ui/log_pane.h"

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>

#include <cstddef>
#include <string>

#include "ui/caption_divider.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

// The toolkit takes seconds to lay out ten megabytes.
constexpr std::size_t kMostShown = 1'000'000;

// One compiler that writes without end must not push the other projects out.
std::string TextOf(const std::vector<FailedProject>& failed) {
  std::string text;
  for (const FailedProject& project : failed) {
    if (!text.empty()) text += '\n';
    text += Excerpt(project.Text(), kMostShown / failed.size());
  }
  return text;
}

}  // namespace

LogPane::LogPane(wxWindow* parent, const FailedProjects& failed, TextBox& box)
    : wxPanel(parent),
      failed_(failed),
      text_(new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY, wxDefaultValidator, "txtLogFile")),
      subscription_(failed.changed.Connect([this] { isStale_ = true; })) {
  text_->SetFont(wxFontInfo(text_->GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
  auto* close = wxBitmapButton::NewCloseButton(this, wxID_ANY);
  close->SetToolTip("Hide the failed projects");
  close->Bind(wxEVT_BUTTON, [&box](wxCommandEvent&) { box.visible.Set(false); });
  auto* head = new wxBoxSizer(wxHORIZONTAL);
  head->Add(new CaptionDivider(this, "Failed Projects"), wxSizerFlags(1).CentreVertical());
  head->Add(close, wxSizerFlags().CentreVertical());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(head, wxSizerFlags().Expand());
  sizer->Add(text_, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4)));
  SetSizer(sizer);
  Bind(wxEVT_IDLE, [this](wxIdleEvent& event) {
    event.Skip();
    if (isStale_ && IsShownOnScreen()) ShowFailures();
  });
}

void LogPane::ShowFailures() {
  isStale_ = false;
  text_->ChangeValue(ToWx(TextOf(failed_.All())));
}

}  // namespace gorbex::ui
