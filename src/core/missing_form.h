#pragma once

#include "core/command.h"
#include "core/list_view.h"
#include "core/property.h"

namespace gorbex {

/// The state of the list of missing components, a separate window that stays open beside the main
/// window.
struct frmMissing {
  ListView lvwComponents;  ///< sub-items: missing_column
  ListView lvwProjects;    ///< that reference the selected component: file name and folder
  Command cmdGoTo{"cmdGoTo", "&Go to Project"};
  Command cmdCheck{"cmdCheck", "Check &Again"};
  Command cmdClose{"cmdClose", "&Close"};
  Property<bool> visible{false};  ///< set again when a visible window is asked for once more
};

}  // namespace gorbex
