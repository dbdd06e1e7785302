#include "ui/details_block.h"

#include <wx/sizer.h>
#include <wx/stattext.h>

#include "ui/palette.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

DetailsBlock::DetailsBlock(wxWindow* parent, frmBuilder& window) : wxPanel(parent) {
  auto* grid = new wxFlexGridSizer(2, FromDIP(wxSize(12, 3)));
  grid->AddGrowableCol(1);
  SetSizer(grid);
  AddRow("Name", "lblProjectName", window.lblProjectName);
  AddRow("File", "lblFilename", window.lblFilename);
  AddRow("Version", "lblVersion", window.lblVersion);
  AddRow("Binary", "lblBinary", window.lblBinary);
  AddRow("Compatibility", "lblCompatability", window.lblCompatability);
}

void DetailsBlock::AddRow(const wxString& caption, const wxString& name,
                          Property<std::string>& label) {
  auto* heading = new wxStaticText(this, wxID_ANY, caption);
  heading->SetForegroundColour(HintColour());
  auto* value = new wxStaticText(this, wxID_ANY, {}, wxDefaultPosition, wxDefaultSize,
                                 wxST_ELLIPSIZE_MIDDLE | wxST_NO_AUTORESIZE, name);
  value->SetMinSize(wxSize(FromDIP(40), -1));
  const auto show = [value](const std::string& text) {
    value->SetLabelText(ToWx(text));
    value->SetToolTip(ToWx(text));
  };
  show(label.Get());
  subscriptions_.push_back(label.changed.Connect(show));
  GetSizer()->Add(heading, wxSizerFlags().CentreVertical());
  GetSizer()->Add(value, wxSizerFlags(1).Expand());
}

}  // namespace gorbex::ui
