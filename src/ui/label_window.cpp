#include "ui/label_window.h"

#include "ui/form_layout.h"
#include "ui/icons.h"

namespace gorbex::ui {

LabelWindow::LabelWindow(wxWindow* parent, frmLabel& form)
    : wxDialog(parent, wxID_ANY, "Label", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "frmLabel"),
      hidden_(form.hidden.changed.Connect([this](const bool& hidden) {
        if (hidden && IsModal()) EndModal(wxID_OK);
      })) {
  SetIcons(ProgramIcons());
  FormLayout layout(*this, fields_);
  layout.AddField("&Project:", "txtVSSProject", form.txtVSSProject);
  layout.AddField("&Label:", "txtLabel", form.txtLabel)->SetFocus();
  layout.AddField("&Comment:", "txtComment", form.txtComment, wxTE_MULTILINE);
  layout.Finish(form.cmdOK, form.cmdCancel);
}

}  // namespace gorbex::ui
