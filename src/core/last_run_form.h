#pragma once

#include <cstddef>
#include <string>

#include "core/command.h"
#include "core/list_view.h"
#include "core/property.h"
#include "core/signal.h"

namespace gorbex {

/// The numbers of the columns in the list of a run's projects.
namespace last_run_column {
inline constexpr std::size_t kProject = 0;
inline constexpr std::size_t kResult = 1;
inline constexpr std::size_t kStart = 2;
inline constexpr std::size_t kDuration = 3;
inline constexpr std::size_t kCritical = 4;
inline constexpr std::size_t kReason = 5;
}  // namespace last_run_column

/// The state of the picture of the last run, a separate window that stays open beside the main
/// window.
struct frmLastRun {
  ListView lvwProjects;           ///< keys are paths; sub-items: last_run_column
  Property<std::string> summary;  ///< such as "9 built, 1 failed in 12.3 s"
  Command cmdGoTo{"cmdGoTo", "&Go to Project"};
  Command cmdSave{"cmdSaveReport", "&Save Report..."};
  Command cmdClose{"cmdClose", "&Close"};
  Property<bool> visible{false};  ///< set again when a visible window is asked for once more

  Signal<std::size_t> headingClicked;  ///< the user wants the rows sorted by this column
  Signal<> timelineChanged;            ///< the bars are to be drawn again
};

}  // namespace gorbex
