#include "ui/form_window.h"

#include <wx/stattext.h>

#include <algorithm>

#include "ui/icons.h"
#include "ui/spacing.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

FormWindow::FormWindow(wxWindow* parent, const wxString& title, const wxString& name,
                       Property<bool>& visible, const std::function<void()>& unload)
    : wxDialog(parent, wxID_ANY, title, wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, name),
      visible_(visible) {
  subscriptions_.push_back(
      visible.changed.Connect([this](const bool& shown) { ShowAsTold(shown); }));
  SetIcons(ProgramIcons());
  Bind(wxEVT_CLOSE_WINDOW, [unload](wxCloseEvent&) { unload(); });
  // Escape means the same as the window's own close button.
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    if (event.GetKeyCode() == WXK_ESCAPE) {
      Close();
    } else {
      event.Skip();
    }
  });
}

FormWindow::~FormWindow() {
  if (visible_.Get()) StorePlace();
}

void FormWindow::ShowAsTold(bool visible) {
  if (visible && !isPlaced_) {
    isPlaced_ = true;
    if (!remembered_ || !remembered_->Restore(*this)) Place();
    HasPlace();
  }
  if (!visible) StorePlace();
  Show(visible);
  if (visible) Raise();
}

void FormWindow::StorePlace() {
  if (remembered_ && isPlaced_) remembered_->Store(*this);
}

void FormWindow::RememberPlace(RegistryTools& registry, const std::string& part) {
  remembered_.emplace(registry, part);
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
    subscriptions_.push_back(text->changed.Connect(show));
    row->Add(shown, wxSizerFlags(1).CentreVertical());
  }
  for (Command* command : commands) {
    row->Add(fields_.NewButton(this, *command), wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  }
  return row;
}

wxButton* FormWindow::AddButton(wxSizer& row, const wxString& label, const wxString& name) {
  auto* button = new wxButton(this, wxID_ANY, label, wxDefaultPosition, wxDefaultSize, 0,
                              wxDefaultValidator, name);
  row.Add(button, wxSizerFlags().Border(wxLEFT, FromDIP(kGap)));
  return button;
}

}  // namespace gorbex::ui
