#pragma once

#include <string>

#include "core/command.h"
#include "core/controls.h"
#include "core/property.h"

namespace gorbex {

/// The state of the log viewer, a separate window that stays open beside the main window.
struct frmLogs {
  std::string LogFilePath;  ///< ends with "\" once it is set
  ComboBox cboLogDate;
  TextBox txtLog;  ///< read-only
  Command cmdClose{"cmdClose", "&Close"};
  Property<bool> visible{false};  ///< set again when a visible window is asked for once more
};

}  // namespace gorbex
