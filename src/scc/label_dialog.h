#pragma once

#include <string>
#include <string_view>

#include "core/dialogs.h"
#include "core/label_form.h"
#include "core/main_window.h"
#include "core/procedure.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// The procedures of the label dialog.
class LabelDialog {
 public:
  /// Connects the form's controls; the form must outlive the dialog.
  LabelDialog(frmLabel& form, SourceSafeSession& session, Dialogs& dialogs, ErrorReport& report);
  LabelDialog(const LabelDialog&) = delete;
  LabelDialog& operator=(const LabelDialog&) = delete;

  /// Shows the form until it hides, with the spec to begin with.
  void Display(const std::string& spec);

 private:
  void cmdOK_Click();
  void cmdCancel_Click();
  void Offer(bool offered);

  /// OK needs both texts, but checks only the one that was not just typed.
  void LookAt(const TextBox& other, std::string_view procedure);

  frmLabel& form_;
  SourceSafeSession& session_;
  Dialogs& dialogs_;
  ErrorReport& report_;
  Subscription label_;
  Subscription comment_;
};

/// Stamps a label with a comment on an item of the database.
class Labelling {
 public:
  Labelling(frmBuilder& window, SourceSafeSession& session, Dialogs& dialogs, ErrorReport& report)
      : window_(window), session_(session), dialogs_(dialogs), report_(report) {}

  /// Offers to label what the first loaded project belongs to.
  void mnuToolsLabel_Click();

 private:
  frmBuilder& window_;
  SourceSafeSession& session_;
  Dialogs& dialogs_;
  ErrorReport& report_;
};

}  // namespace gorbex
