#include "scc/labelling.h"

#include "scc/label_dialog.h"

namespace gorbex {

void Labelling::mnuToolsLabel_Click() {
  if (session_.Refuses()) return;
  Procedure(report_, ": frmBuilder.mnuToolsLabel_Click").Run([&](Procedure& on) {
    if (window_.ProjectMembers.Count() == 0) {
      on([&] { dialogs_.Show({"No Projects to Label!!"}); });
      return;
    }
    frmLabel form;
    LabelDialog dialog(form, session_, dialogs_, report_);
    on([&] { dialog.Display((*window_.ProjectMembers.begin())->VSSProject); });
  });
}

}  // namespace gorbex
