#include "build/options_dialog.h"

#include "core/editor_call.h"
#include "core/file_tools.h"
#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {
namespace {

// The reply setting under which errors are reported to the error user instead of the sender.
constexpr std::int16_t kReplyToUser = 1;

/// The check boxes that hold a flag of the settings.
struct FlagBox {
  CheckBox frmOptions::*box;
  bool clsOptions::*flag;
};
constexpr FlagBox kFlagBoxes[] = {
    {&frmOptions::chkGetLatest, &clsOptions::GetLatest},
    {&frmOptions::chkAutoStart, &clsOptions::AutoStart},
    {&frmOptions::chkCompatability, &clsOptions::Compatible},
    {&frmOptions::chkChangeRefs, &clsOptions::ChangeRefs},
    {&frmOptions::chkAutoDependant, &clsOptions::AutoBuildDependant},
    {&frmOptions::chkStopOnErrors, &clsOptions::StopProcessing},
    {&frmOptions::chkSkipUsers, &clsOptions::SkipUsersOfFailed},
    {&frmOptions::chkSkipUpToDate, &clsOptions::SkipUpToDate},
};

}  // namespace

OptionsDialog::OptionsDialog(frmOptions& form, clsOptions& options, Dialogs& dialogs,
                             ErrorReport& report)
    : form_(form), options_(options), dialogs_(dialogs), report_(report) {
  form_.cmdOK.SetHandler([this] { cmdOK_Click(); });
  form_.cmdApply.SetHandler([this] { cmdApply_Click(); });
  form_.cmdBrowse.SetHandler([this] { cmdBrowse_Click(); });
  form_.cmdBrowseVBP.SetHandler([this] { cmdBrowseVBP_Click(); });
  ConnectControls();
}

template <class T>
void OptionsDialog::FollowEdits(Property<T>& value) {
  subscriptions_.Add(value.changed, [this](const T&) { form_.cmdApply.enabled.Set(true); });
}

void OptionsDialog::ConnectControls() {
  for (const auto& [box, flag] : kFlagBoxes) FollowEdits((form_.*box).value);
  FollowEdits(form_.chkDebug.value);
  for (TextBox* box : {&form_.txtErrorUser, &form_.txtBuildPath, &form_.txtEditor,
                       &form_.txtInterval, &form_.txtVBPName}) {
    FollowEdits(box->text);
  }
  FollowEdits(form_.optReply);
  FollowEdits(form_.spnJobs);
  subscriptions_.Add(form_.chkAutoLaunchVBP.value.changed,
                     [this](bool) { chkAutoLaunchVBP_Click(); });
  subscriptions_.Add(form_.tbsOptions.changed, [this](std::size_t) { tbsOptions_Click(); });
  subscriptions_.Add(form_.keyDown, [this](const Key& key) { Form_KeyDown(key); });
}

void OptionsDialog::Form_Load() {
  Procedure(report_, ": frmOptions.Form_Load").Run([&](Procedure& on) {
    on([&] { ShowSettings(); });
    on([&] { EnableTestProject(); });
    on([&] { tbsOptions_Click(); });
    // Filling the controls looked like edits.
    on([&] { form_.cmdApply.enabled.Set(false); });
  });
}

void OptionsDialog::ShowSettings() {
  for (const auto& [box, flag] : kFlagBoxes) (form_.*box).value.Set(options_.*flag);
  form_.optReply.Set(options_.ReplyTo == kReplyToUser ? 1 : 0);
  form_.txtErrorUser.text.Set(options_.ReplyUser);
  form_.spnJobs.Set(options_.Jobs);
  form_.txtBuildPath.text.Set(options_.BuildPath);
  form_.txtEditor.text.Set(options_.Editor);
  form_.txtInterval.text.Set(std::to_string(options_.Interval));
  form_.txtVBPName.text.Set(options_.AutoLaunchName);
  form_.chkAutoLaunchVBP.value.Set(options_.AutoLaunchVBP);
  form_.chkDebug.value.Set(EqualsIgnoringCase(options_.DebugBuild, "true"));
}

void OptionsDialog::TakeControls(Procedure& on) {
  for (const auto& [box, flag] : kFlagBoxes) options_.*flag = (form_.*box).value.Get();
  options_.ReplyTo = static_cast<std::int16_t>(form_.optReply.Get());
  on([&] { options_.ReplyUser = form_.txtErrorUser.text.Get(); });
  options_.Jobs = form_.spnJobs.Get();
  on([&] { options_.BuildPath = form_.txtBuildPath.text.Get(); });
  on([&] { options_.Editor = form_.txtEditor.text.Get(); });
  on([&] { options_.Interval = ToLong(NumericValue(form_.txtInterval.text.Get())); });
  on([&] { options_.AutoLaunchName = form_.txtVBPName.text.Get(); });
  options_.AutoLaunchVBP = form_.chkAutoLaunchVBP.value.Get();
  on([&] { options_.DebugBuild = FlagText(form_.chkDebug.value.Get()); });
}

bool OptionsDialog::Apply() {
  bool isUsable = true;
  Procedure(report_, ": frmOptions.cmdApply_Click").Run([&](Procedure& on) {
    const auto problem = EditorProblem(form_.txtEditor.text.Get());
    isUsable = !problem;
    if (problem) {
      form_.tbsOptions.Set(static_cast<std::size_t>(OptionsPage::Build));
      dialogs_.Show(
          {"The editor cannot be used: " + *problem, Buttons::Ok, MessageIcon::Exclamation});
      return;
    }
    TakeControls(on);
    on([&] { form_.cmdApply.enabled.Set(false); });
    on([&] { options_.SaveSettings(); });
  });
  return isUsable;
}

void OptionsDialog::cmdApply_Click() {
  static_cast<void>(Apply());
}

void OptionsDialog::cmdOK_Click() {
  Procedure(report_, ": frmOptions.cmdOK_Click").Run([&](Procedure& on) {
    if (on([&] { return Apply(); })) on([&] { form_.closed.Set(true); });
  });
}

void OptionsDialog::cmdBrowse_Click() {
  Procedure(report_, ": frmOptions.cmdBrowse_Click").Run([&](Procedure& on) {
    const auto folder = on([&] { return dialogs_.BrowseForDir("Please select Build Folder"); });
    if (!folder || folder->empty()) return;
    // File names are joined to it directly.
    on([&] { form_.txtBuildPath.text.Set(JoinPath(*folder, "")); });
  });
}

void OptionsDialog::cmdBrowseVBP_Click() {
  Procedure(report_, ": frmOptions.cmdBrowseVBP_Click").Run([&](Procedure& on) {
    const auto file = on([&] {
      return dialogs_.OpenFile(
          {"Please select a VB Project to load", "VB Projects (*.vbp)|*.vbp", "*.vbp"});
    });
    if (file) on([&] { form_.txtVBPName.text.Set(*file); });
  });
}

void OptionsDialog::EnableTestProject() {
  const bool launches = form_.chkAutoLaunchVBP.value.Get();
  form_.txtVBPName.enabled.Set(launches);
  form_.cmdBrowseVBP.enabled.Set(launches);
}

void OptionsDialog::chkAutoLaunchVBP_Click() {
  Procedure(report_, ": frmOptions.chkAutoLaunchVBP_Click").Run([&](Procedure& on) {
    on([&] { EnableTestProject(); });
    on([&] { form_.cmdApply.enabled.Set(true); });
  });
}

void OptionsDialog::tbsOptions_Click() {
  Procedure(report_, ": frmOptions.tbsOptions_Click").Run([&](Procedure& on) {
    for (std::size_t page = 0; page < kOptionsPages; ++page) {
      on([&] { form_.picOptions.at(page).Set(page == form_.tbsOptions.Get()); });
    }
  });
}

void OptionsDialog::Form_KeyDown(const Key& key) {
  if (key.code != KeyCode::Tab || !key.control || key.shift || key.alt) return;
  Procedure(report_, ": frmOptions.Form_KeyDown").Run([&](Procedure& on) {
    on([&] { form_.tbsOptions.Set((form_.tbsOptions.Get() + 1) % kOptionsPages); });
  });
}

}  // namespace gorbex
