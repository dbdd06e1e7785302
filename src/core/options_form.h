#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "core/command.h"
#include "core/controls.h"
#include "core/property.h"
#include "core/signal.h"

namespace gorbex {

/// The pages of the options dialog, in the order of its tabs.
enum class OptionsPage : std::size_t { Build, TestProject, Mail };
inline constexpr std::size_t kOptionsPages = 3;

enum class KeyCode { Tab, Other };

/// A key pressed in a dialog, with the modifiers held.
struct Key {
  KeyCode code = KeyCode::Other;
  bool control = false;
  bool shift = false;
  bool alt = false;
};

/// The state of the options dialog. A front end sets the controls as the user does and emits every
/// key pressed; it reads back which page is shown and which controls are enabled.
struct frmOptions {
  Property<std::size_t> tbsOptions{0};                     ///< the selected tab
  std::array<Property<bool>, kOptionsPages> picOptions{};  ///< which pages are shown
  Signal<Key> keyDown;

  CheckBox chkGetLatest;
  CheckBox chkCompatability;
  CheckBox chkChangeRefs;
  CheckBox chkAutoDependant;
  CheckBox chkStopOnErrors;
  CheckBox chkSkipUsers;
  CheckBox chkSkipUpToDate;
  CheckBox chkDebug;
  Property<std::int32_t> spnJobs{1};  ///< compilers side by side; 0 for as many as processors
  TextBox txtBuildPath;
  TextBox txtEditor;
  Command cmdBrowse{"cmdBrowse", "&Browse..."};

  CheckBox chkAutoLaunchVBP;
  TextBox txtVBPName;
  Command cmdBrowseVBP{"cmdBrowseVBP", "B&rowse..."};

  CheckBox chkAutoStart;
  TextBox txtInterval;                ///< seconds
  Property<std::size_t> optReply{0};  ///< which of the pair is chosen
  TextBox txtErrorUser;

  Command cmdOK{"cmdOK", "OK"};
  Command cmdApply{"cmdApply", "&Apply"};
  Property<bool> closed{false};  ///< set when OK has closed the dialog
};

}  // namespace gorbex
