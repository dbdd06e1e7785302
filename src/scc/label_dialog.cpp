#include "scc/label_dialog.h"

namespace gorbex {

LabelDialog::LabelDialog(frmLabel& form, SourceSafeSession& session, Dialogs& dialogs,
                         ErrorReport& report)
    : form_(form),
      session_(session),
      dialogs_(dialogs),
      report_(report),
      label_(form.txtLabel.text.changed.Connect(
          [this](const std::string&) { LookAt(form_.txtComment, ": frmLabel.txtLabel_Change"); })),
      comment_(form.txtComment.text.changed.Connect(
          [this](const std::string&) { LookAt(form_.txtLabel, ": frmLabel.txtComment_Change"); })) {
  form_.cmdOK.SetHandler([this] { cmdOK_Click(); });
  form_.cmdCancel.SetHandler([this] { cmdCancel_Click(); });
}

void LabelDialog::LookAt(const TextBox& other, std::string_view procedure) {
  Procedure(report_, procedure).Do([&] { form_.cmdOK.enabled.Set(!other.text.Get().empty()); });
}

void LabelDialog::Display(const std::string& spec) {
  Procedure(report_, ": frmLabel.Display").Run([&](Procedure& on) {
    const bool isComplete =
        !form_.txtLabel.text.Get().empty() && !form_.txtComment.text.Get().empty();
    on([&] { form_.cmdOK.enabled.Set(isComplete); });
    on([&] { form_.txtVSSProject.text.Set(spec); });
    on([&] { form_.hidden.Set(false); });
    on([&] { dialogs_.ShowLabel(form_); });
  });
}

void LabelDialog::cmdOK_Click() {
  Procedure(report_, ": frmLabel.cmdOK_Click").Run([&](Procedure& on) {
    if (session_.Refuses()) return;
    const auto use = session_.Use();
    // While the client works the user may act: neither button means anything then.
    Offer(false);
    const std::shared_ptr<void> done(nullptr, [this](void*) { Offer(true); });
    const std::string spec = form_.txtVSSProject.text.Get();
    const auto item = on([&] { return session_.VSSItem(spec); });
    if (item == nullptr) {
      on([&] { dialogs_.Show({"Invalid VSS Project"}); });
      return;
    }
    try {
      item->Label(form_.txtLabel.text.Get(), form_.txtComment.text.Get());
    } catch (const RuntimeError& error) {
      // The number has always been zero, whatever the error's number is.
      const std::string message = "Failed to label : " + error.Description() + "(0)";
      on([&] { dialogs_.Show({message}); });
      return;
    }
    on([&] { form_.hidden.Set(true); });
  });
}

void LabelDialog::Offer(bool offered) {
  form_.cmdOK.enabled.Set(offered);
  form_.cmdCancel.enabled.Set(offered);
}

void LabelDialog::cmdCancel_Click() {
  Procedure(report_, ": frmLabel.cmdCancel_Click").Do([&] { form_.hidden.Set(true); });
}

void Labelling::mnuToolsLabel_Click() {
  if (session_.Refuses()) return;
  Procedure(report_, ": frmBuilder.mnuToolsLabel_Click").Run([&](Procedure& on) {
    if (window_.ProjectMembers.Count() == 0) {
      on([&] { dialogs_.Show({"No Projects to Label!!"}); });
      return;
    }
    frmLabel form;
    LabelDialog dialog(form, session_, dialogs_, report_);
    on([&] { dialog.Display((*window_.ProjectMembers.begin())->VSSProject); });
  });
}

}  // namespace gorbex
