#include "ui/log_pane.h"

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>

#include <cstddef>
#include <utility>

#include "core/file_tools.h"
#include "ui/caption_divider.h"
#include "ui/observe.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

LogPane::LogPane(wxWindow* parent, const FailedProjects& failed, TextBox& box, OpenFailure open)
    : wxPanel(parent),
      failed_(failed),
      projects_(new wxListBox(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, 0, nullptr,
                              wxLB_SINGLE, wxDefaultValidator, "failedProjects")),
      text_(new wxTextCtrl(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY, wxDefaultValidator, "txtLogFile")),
      open_(std::move(open)),
      subscription_(failed.changed.Connect([this] { isStale_ = true; })) {
  text_->SetFont(wxFontInfo(text_->GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE));
  projects_->SetMinSize(wxSize(FromDIP(170), -1));
  projects_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
    const auto number = static_cast<std::size_t>(event.GetSelection());
    if (event.GetSelection() >= 0 && number < failed_.All().size()) {
      shown_ = failed_.All()[number].path;
      ShowSection();
    }
  });
  projects_->SetToolTip("Enter or a double click opens the file where the project failed");
  projects_->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { OpenShown(); });
  projects_->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    const bool opens = (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && !event.HasAnyModifiers();
    if (opens) OpenShown();
    event.Skip(!opens);
  });
  // The list is filled before it has a size, so the chosen project may be out of sight.
  Observe(*projects_, wxEVT_SIZE, [this] {
    CallAfter([this] {
      const int chosen = projects_->GetSelection();
      if (chosen != wxNOT_FOUND) projects_->EnsureVisible(chosen);
    });
  });
  auto* content = new wxBoxSizer(wxHORIZONTAL);
  content->Add(projects_, wxSizerFlags().Expand().Border(wxRIGHT, FromDIP(4)));
  content->Add(text_, wxSizerFlags(1).Expand());
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(Head(box), wxSizerFlags().Expand());
  sizer->Add(content, wxSizerFlags(1).Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(4)));
  SetSizer(sizer);
  Observe(*this, wxEVT_IDLE, [this] {
    if (isStale_ && IsShownOnScreen()) ShowFailures();
  });
}

wxSizer* LogPane::Head(TextBox& box) {
  auto* close = wxBitmapButton::NewCloseButton(this, wxID_ANY, "hideFailed");
  close->SetToolTip("Hide the failed projects");
  close->Bind(wxEVT_BUTTON, [&box](wxCommandEvent&) { box.visible.Set(false); });
  auto* head = new wxBoxSizer(wxHORIZONTAL);
  head->Add(new CaptionDivider(this, "Failed Projects"), wxSizerFlags(1).CentreVertical());
  head->Add(close, wxSizerFlags().CentreVertical());
  return head;
}

void LogPane::GoTo(const std::string& path) {
  if (failed_.Find(path) == nullptr || (path == shown_ && !isStale_)) return;
  shown_ = path;
  ShowFailures();
}

void LogPane::Enter() {
  if (isStale_) ShowFailures();
  projects_->SetFocus();
}

// A section that somebody reads stays as long as its project is in the list.
void LogPane::ShowFailures() {
  isStale_ = false;
  const auto& failed = failed_.All();
  if (failed_.Find(shown_) == nullptr) shown_ = failed.empty() ? "" : failed.front().path;
  wxArrayString names;
  int chosen = wxNOT_FOUND;
  for (const FailedProject& project : failed) {
    if (project.path == shown_) chosen = static_cast<int>(names.size());
    names.push_back(ToWx(GetFileFromPath(project.path)));
  }
  projects_->Set(names);
  projects_->SetSelection(chosen);
  ShowSection();
}

// The editor may be a dialog that says why there is none, so the event ends first.
void LogPane::OpenShown() {
  CallAfter([this, path = shown_] { open_(path); });
}

void LogPane::ShowSection() {
  // The toolkit takes seconds to lay out ten megabytes.
  constexpr std::size_t kMostShown = 1'000'000;
  const FailedProject* project = failed_.Find(shown_);
  text_->ChangeValue(project == nullptr ? wxString() : ToWx(Excerpt(project->Text(), kMostShown)));
}

}  // namespace gorbex::ui
