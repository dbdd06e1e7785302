#pragma once

#include "core/command.h"
#include "core/controls.h"

namespace gorbex {

/// The state of the form on which a component's class or user control is chosen for a test.
struct frmSelectControl {
  Property<bool> visible{false};

  ComboBox cboComponents;  ///< a drop-down list
  TextBox txtProperty;     ///< may stay empty, as may the value
  TextBox txtValue;

  Command cmdTest{"cmdTest", "&Test"};
  Command cmdClose{"cmdClose", "&Close"};
};

}  // namespace gorbex
