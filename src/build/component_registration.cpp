#include "build/component_registration.h"

#include "build/program_argument.h"
#include "core/list_columns.h"

namespace gorbex {
bool ComponentRegistration::Register(const std::string& componentFile) {
  RequireFileArgument(componentFile);
  return shell_.ShellAndWait("RegSvr32 /s \"" + componentFile + "\"");
}

bool ComponentRegistration::Unregister(const std::string& componentFile) {
  RequireFileArgument(componentFile);
  return shell_.ShellAndWait("RegSvr32 -u /s \"" + componentFile + "\"");
}

void ComponentRegistration::Run(std::string_view procedure, Action action) {
  Procedure(report_, procedure).Run([&](Procedure& on) {
    const ListRow* row = on([&] { return &window_.lvwData.SelectedRow(); });
    if (row == nullptr) return;
    const std::string component = row->SubItem(reference_column::kComponent);
    if (on([&] { return (this->*action)(component); })) {
      on([&] { changed_(); });
    } else {
      // The same words for both directions, as always.
      on([&] { dialogs_.Show({"Failed to Register " + component}); });
      if (!advice_.empty()) on([&] { window_.SetStatus(advice_); });
    }
  });
}

void ComponentRegistration::mnuDataPopupReg_Click() {
  Run(": frmBuilder.mnuDataPopupReg_Click", &ComponentRegistration::Register);
}

void ComponentRegistration::mnuDataPopupUnReg_Click() {
  Run(": frmBuilder.mnuDataPopupUnReg_Click", &ComponentRegistration::Unregister);
}

}  // namespace gorbex
