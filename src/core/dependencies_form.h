#pragma once

#include <cstddef>
#include <string>

#include "core/command.h"
#include "core/controls.h"
#include "core/list_view.h"
#include "core/property.h"
#include "core/signal.h"

namespace gorbex {

/// The numbers of the sub-items in the list beside the picture of the dependencies.
namespace dependency_column {
inline constexpr std::size_t kLevel = 1;
inline constexpr std::size_t kState = 2;
inline constexpr std::size_t kUses = 3;
inline constexpr std::size_t kUsers = 4;
}  // namespace dependency_column

/// The state of the picture of the dependencies, a separate window that stays open beside the main
/// window. The list says the same as the picture.
struct frmDependencies {
  ListView lvwProjects;           ///< by path, in the picture's order; sub-items: dependency_column
  TextBox txtDetails;             ///< read-only: all that is known of the selected project
  Property<std::string> summary;  ///< of the picture
  Command cmdOutdated{"cmdOutdated", "Show &Out of Date"};
  Command cmdClose{"cmdClose", "&Close"};
  Property<bool> visible{false};  ///< set again when a visible window is asked for once more

  Signal<> projectActivated;  ///< the user wants to go to the selected project in the tree
};

}  // namespace gorbex
