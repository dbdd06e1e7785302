#include "ui/details_block.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/clipboard.h"
#include "ui/cut_text.h"
#include "ui/observe.h"
#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

DetailsBlock::DetailsBlock(wxWindow* parent, frmBuilder& window)
    : wxPanel(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
              wxTAB_TRAVERSAL | wxFULL_REPAINT_ON_RESIZE, "details"),
      window_(window) {
  auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(12, 3)));
  grid->AddGrowableCol(1);
  SetSizer(grid);
  AddRow("Name", "lblProjectName", window.lblProjectName);
  AddRow("File", "lblFilename", window.lblFilename);
  AddRow("Version", "lblVersion", window.lblVersion);
  AddRow("Binary", "lblBinary", window.lblBinary);
  AddRow("Compatibility", "lblCompatability", window.lblCompatability);
  RefreshWithFocus(*this);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
    wxPaintDC dc(this);
    if (HasFocus()) wxRendererNative::Get().DrawFocusRect(this, dc, GetClientRect());
  });
  Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent&) { SetFocus(); });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const bool isCopy = event.GetKeyCode() == 'C' && event.GetModifiers() == wxMOD_CONTROL;
    if (isCopy) Copy();
    event.Skip(!isCopy);
  });
}

bool DetailsBlock::AcceptsFocus() const {
  return !window_.lblFilename.Get().empty();
}

void DetailsBlock::Copy() const {
  wxString text;
  for (const auto& [caption, value] : rows_) text += caption + ": " + ToWx(value->Get()) + "\n";
  CopyText(text);
}

void DetailsBlock::AddRow(const wxString& caption, const wxString& name,
                          Property<std::string>& label) {
  rows_.emplace_back(caption, &label);
  auto* heading = new wxStaticText(this, wxID_ANY, caption);
  heading->SetForegroundColour(HintColour());
  auto* value = new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                 wxST_NO_AUTORESIZE, name);
  value->SetMinSize(wxSize(FromDIP(40), -1));
  const auto show = [value, &label] {
    const wxString text = ToWx(label.Get());
    wxClientDC dc(value);
    dc.SetFont(value->GetFont());
    value->SetLabelText(CutPath(text, dc, value->GetSize().x));
    value->SetToolTip(text);
  };
  Observe(*value, wxEVT_SIZE, show);
  subscriptions_.Add(label.changed, [show](const std::string&) { show(); });
  GetSizer()->Add(heading, wxSizerFlags().CentreVertical());
  GetSizer()->Add(value, wxSizerFlags(1).Expand());
}

}  // namespace gorbex::ui
