#include "mail/mail_service.h"

#include <new>
#include <utility>

#include "mail/mail_settings.h"
#include "mail/mail_tick.h"
#include "mail/sender_list.h"
#include "platform/code_page.h"

namespace gorbex {

MailService::MailService(const Uses& uses) : uses_(uses) {}

MailService::~MailService() = default;

MailAccount MailService::Account() const {
  const auto value = [this](std::string_view name) {
    return uses_.registry.fnsGetRegistryValue(kProgramKey, name);
  };
  return {value(mail_setting::kStore), value(mail_setting::kTransport), value(mail_setting::kFrom),
          value(mail_setting::kTokenCommand)};
}

void MailService::mnuToolsInBox_Click() {
  Command& entry = uses_.window.menu.mnuToolsInBox;
  const bool started =
      Procedure(uses_.report, ": frmBuilder.mnuToolsInBox_Click").Run([&](Procedure& on) {
        on([&] { entry.checked.Set(!entry.checked.Get()); });
        if (!entry.checked.Get()) {
          on([&] { uses_.window.tmrOutlook.enabled.Set(false); });
          kept_.reset();
        } else if (!uses_.work.Goes(Task::MailStart)) {
          Start(on);
        }
      });
  if (!started) entry.checked.Set(false);
}

void MailService::Start(Procedure& on) {
  frmBuilder& window = uses_.window;
  const auto task = uses_.work.Begin(Task::MailStart);
  on([&] { uses_.mail.Open(Account()); });
  refused_.clear();
  told_.clear();
  kept_.reset();
  hasSeenMailbox_ = isAway_ = false;
  on([&] { window.tmrOutlook.interval.Set(uses_.options.TimerInterval()); });
  // While the mail system was opened the user may have switched the service off again.
  on([&] { window.tmrOutlook.enabled.Set(window.menu.mnuToolsInBox.checked.Get()); });
  if (uses_.options.Interval > 0 || !window.menu.mnuToolsInBox.checked.Get()) return;
  on([&] { window.SetStatus("The inbox is never looked into: set an interval in the options"); });
}

void MailService::tmrOutlook_Timer() {
  Work& work = uses_.work;
  const bool isBusy = work.Goes(Task::Mailbox) || work.Goes(Task::Run) || work.Goes(Task::Compile);
  if (isBusy || !work.MayUseSourceControl()) return;
  const auto task = work.BeginAlone(Task::Mailbox);
  if (task == nullptr) return;
  const std::shared_ptr<void> done(
      nullptr, [this](void*) { uses_.window.mousePointer.Set(MousePointer::Default); });
  uses_.window.tmrOutlook.enabled.Set(false);
  RunTick();
}

std::unique_ptr<MailTick> MailService::NewTick() {
  return std::make_unique<MailTick>(MailTick::Uses{
      uses_.window, uses_.options, uses_.files, uses_.log, uses_.mail, uses_.session, uses_.latest,
      uses_.compile, uses_.events,
      SenderList(uses_.registry.fnsGetRegistryValue(kProgramKey, mail_setting::kAllowedSenders)),
      refused_, uses_.work, [this](const std::string& why) { TellOnce(why); }});
}

void MailService::RunTick() {
  auto tick = kept_ != nullptr ? std::move(kept_) : NewTick();
  try {
    if (tick->HasUnmarked()) {
      tick->Resume();
    } else {
      tick->Run();
    }
    if (tick->SawMailbox()) NoteBack();
    FinishTick();
  } catch (const MailboxAway& reason) {
    Leave(std::move(tick), reason);
  } catch (const RuntimeError& error) {
    Fail(*tick, error);
  } catch (const std::bad_alloc&) {
    Fail(*tick, RuntimeError(ErrorNumber::OutOfMemory));
  }
}

void MailService::Fail(MailTick& tick, const RuntimeError& error) {
  const std::string whose = tick.Sender().empty() ? "" : " in the request from " + tick.Sender();
  uses_.log.WriteLog("Email requests are no longer served, because of an error" + whose +
                     " at line " + std::to_string(tick.Line()) + ": " +
                     OnOneLine(error.Description()));
  // The user may have switched it off meanwhile.
  const bool isTold = tick.ReportFailure(error);
  if (isTold && uses_.window.menu.mnuToolsInBox.checked.Get()) mnuToolsInBox_Click();
}

// A mailbox that has never been there is not away: what names it may be wrong.
void MailService::Leave(std::unique_ptr<MailTick> tick, const MailboxAway& reason) {
  hasSeenMailbox_ = hasSeenMailbox_ || tick->SawMailbox();
  if (!hasSeenMailbox_) return Fail(*tick, reason);
  if (!std::exchange(isAway_, true)) {
    uses_.log.WriteLog("Email requests wait, because the mailbox is away: " +
                       OnOneLine(reason.Description()));
  }
  tick->Rest();
  if (tick->HasUnmarked()) kept_ = std::move(tick);
  FinishTick();
}

void MailService::NoteBack() {
  hasSeenMailbox_ = true;
  if (std::exchange(isAway_, false)) uses_.log.WriteLog("The mailbox is back");
}

// Each look may find it so; one line is enough.
void MailService::TellOnce(const std::string& why) {
  if (told_.insert(why).second) uses_.log.WriteLog(why);
}

// The user may have switched the service off meanwhile.
void MailService::FinishTick() {
  frmBuilder& window = uses_.window;
  window.tmrOutlook.enabled.Set(window.menu.mnuToolsInBox.checked.Get());
  window.SetStatus("Idle");
  window.menu.mnuFileBuild.enabled.Set(true);
}

}  // namespace gorbex
