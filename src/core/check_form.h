#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "core/command.h"
#include "core/list_view.h"
#include "core/property.h"
#include "core/signal.h"

namespace gorbex {

/// The numbers of the sub-items in the list of findings.
namespace check_column {
inline constexpr std::size_t kProject = 0;
inline constexpr std::size_t kText = 1;
inline constexpr std::size_t kRemedy = 2;
}  // namespace check_column

/// The state of the list of findings, a separate window that stays open beside the main window.
struct frmCheck {
  ListView lvwFindings;           ///< the file's name; sub-items: check_column
  Property<std::string> summary;  ///< such as "2 errors, 1 warning"
  Command cmdGoTo{"cmdGoTo", "&Go to Project"};
  Command cmdOpen{"cmdOpen", "&Open File"};
  Command cmdCheck{"cmdCheck", "Check &Again"};
  Command cmdClose{"cmdClose", "&Close"};
  Property<bool> visible{false};  ///< set again when a visible window is asked for once more

  Signal<std::size_t> headingClicked;  ///< the user wants the rows sorted by this column
  Signal<> rowActivated;               ///< the selected one

  /// The user wants to see this file, at a line (from 1) if there is one.
  Signal<std::string, std::optional<std::size_t>> fileWanted;
};

}  // namespace gorbex
