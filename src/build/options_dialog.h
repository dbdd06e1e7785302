#pragma once

#include <vector>

#include "core/dialogs.h"
#include "core/options.h"
#include "core/options_form.h"
#include "core/procedure.h"
#include "core/signal.h"

namespace gorbex {

/// The options dialog: fills its form from the settings and writes the form back when the
/// user applies it. Closing it otherwise keeps the settings as they were last applied.
class OptionsDialog {
 public:
  /// Connects the form's controls: from then on a front end only changes the form's state. The
  /// form must outlive the dialog.
  OptionsDialog(frmOptions& form, clsOptions& options, Dialogs& dialogs, ErrorReport& report);
  OptionsDialog(const OptionsDialog&) = delete;
  OptionsDialog& operator=(const OptionsDialog&) = delete;

  void Form_Load();

  /// Ctrl+Tab moves to the next tab, from the last one to the first.
  void Form_KeyDown(const Key& key);
  void tbsOptions_Click();

  /// Writes every control into its setting, in a fixed order, and saves the settings. A text that
  /// is not a number makes an interval of 0; one too large is error 6. Writes nothing while the
  /// editor's command cannot be used.
  void cmdApply_Click();

  /// Applies and closes; stays open when the editor's command cannot be used.
  void cmdOK_Click();

  /// A choice that is cancelled changes nothing.
  void cmdBrowse_Click();
  void cmdBrowseVBP_Click();

  void chkAutoLaunchVBP_Click();

 private:
  void ConnectControls();
  template <class T>
  void FollowEdits(Property<T>& value);
  void ShowSettings();
  void EnableTestProject();
  void TakeControls(Procedure& on);

  /// False, and the user is told, when the editor's command cannot be used: nothing is applied
  /// then.
  [[nodiscard]] bool Apply();

  frmOptions& form_;
  clsOptions& options_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex
