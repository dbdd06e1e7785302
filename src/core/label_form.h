#pragma once

#include "core/command.h"
#include "core/controls.h"

namespace gorbex {

/// The state of the label dialog.
struct frmLabel {
  TextBox txtVSSProject;  ///< the "$/" spec of what is labelled
  TextBox txtLabel;
  TextBox txtComment;
  Command cmdOK{"cmdOK", "OK"};
  Command cmdCancel{"cmdCancel", "Cancel"};
  Property<bool> hidden{false};  ///< set when the dialog is to close
};

}  // namespace gorbex
