#include "ui/form_window.h"

#include <wx/stattext.h>

#include <algorithm>

#include "app/stored_position.h"
#include "ui/icons.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"
#include "ui/window_place.h"

namespace gorbex::ui {

FormWindow::FormWindow(wxWindow* parent, const wxString& title, const wxString& name,
                       Property<bool>& visible, const std::function<void()>& unload)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, name),
      visible_(visible) {
  subscriptions_.Add(visible.changed, [this](const bool& shown) { ShowAsTold(shown); });
  SetIcons(ProgramIcons());
  Bind(wxEVT_CLOSE_WINDOW, [unload](wxCloseEvent&) { unload(); });
  // Escape means the same as the window's own close button.
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const bool isEscape = event.GetKeyCode() == WXK_ESCAPE;
    if (isEscape) Close();
    event.Skip(!isEscape);
  });
}

FormWindow::~FormWindow() {
  if (visible_.Get()) StorePlace();
}

void FormWindow::ShowAsTold(bool visible) {
  if (visible && !isPlaced_) {
    isPlaced_ = true;
    if (!RestorePlace()) Place();
    HasPlace();
  }
  if (!visible) StorePlace();
  Show(visible);
  if (visible) Raise();
}

// Where it was, or where it fits on the present screens; false when no place is stored.
bool FormWindow::RestorePlace() {
  if (registry_ == nullptr) return false;
  try {
    const std::string stored = registry_->fnsGetRegistryValue(kPositionKey, part_);
    if (stored.empty()) return false;
    PutOnScreen(*this, PositionFrom(stored));
    return true;
  } catch (const RuntimeError&) {
    return false;
  }
}

// A maximized window's place stays what it was before.
void FormWindow::StorePlace() {
  if (registry_ == nullptr || !isPlaced_ || IsMaximized() || IsIconized()) return;
  registry_->subSetRegistryValue(kPositionKey, part_, PositionText(PlaceOf(*this)));
}

void FormWindow::PlaceAtFoot(int height) {
  constexpr int kWidest = 1200;
  const wxRect below = GetParent()->GetRect();
  SetSize(std::min(below.width - 2 * FromDIP(kMargin), FromDIP(kWidest)), FromDIP(height));
  SetPosition({below.x + (below.width - GetSize().x) / 2, below.GetBottom() - GetSize().y});
}

void FormWindow::SetContents(wxSizer* contents, const wxSize& least) {
  SetSizer(contents);
  wxSize smallest = FromDIP(least);
  smallest.IncTo(contents->CalcMin());
  SetMinClientSize(smallest);
}

void FormWindow::SetContents(wxWindow* content, wxSizer* foot, const wxSize& least) {
  auto* sizer = new wxBoxSizer(wxVERTICAL);
  sizer->Add(content, wxSizerFlags(1).Expand());
  sizer->Add(foot, wxSizerFlags().Expand().Border(wxALL, FromDIP(kMargin)));
  SetContents(sizer, least);
}

wxSizer* FormWindow::Foot(Property<std::string>* text, const std::vector<Command*>& commands) {
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  if (text == nullptr) {
    row->AddStretchSpacer();
  } else {
    auto* shown = new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                   wxST_ELLIPSIZE_END, "summary");
    shown->SetMinSize(FromDIP(wxSize(60, -1)));
    const auto show = [shown](const std::string& value) {
      shown->SetLabelText(ToWx(value));
      shown->SetToolTip(ToWx(value));
    };
    show(text->Get());
    subscriptions_.Add(text->changed, show);
    row->Add(shown, wxSizerFlags(1).CentreVertical());
  }
  for (Command* command : commands) {
    row->Add(fields_.NewButton(this, *command), wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  }
  return row;
}

void FormWindow::AddButton(wxSizer& row, const wxString& label, const wxString& name,
                           const std::function<void()>& press) {
  auto* button = new wxButton(this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, name);
  button->Bind(wxEVT_BUTTON, [press](wxCommandEvent&) { press(); });
  row.Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
}

}  // namespace gorbex::ui
