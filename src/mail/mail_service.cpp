#include "mail/mail_service.h"

#include <memory>
#include <new>
#include <utility>

#include "core/text.h"
#include "mail/mail_settings.h"
#include "mail/mail_tick.h"
#include "mail/sender_list.h"
#include "platform/code_page.h"

namespace gorbex {

MailAccount MailService::Account() const {
  const auto value = [this](std::string_view name) {
    return uses_.registry.fnsGetRegistryValue(kProgramKey, name);
  };
  return {value(mail_setting::kStore), value(mail_setting::kTransport), value(mail_setting::kFrom)};
}

void MailService::mnuToolsInBox_Click() {
  Command& entry = uses_.window.menu.mnuToolsInBox;
  const bool started =
      Procedure(uses_.report, ": frmBuilder.mnuToolsInBox_Click").Run([&](Procedure& on) {
        on([&] { entry.checked.Set(!entry.checked.Get()); });
        if (entry.checked.Get()) {
          Start(on);
        } else {
          on([&] { uses_.window.tmrOutlook.enabled.Set(false); });
        }
      });
  if (!started) entry.checked.Set(false);
}

void MailService::Start(Procedure& on) {
  Timer& timer = uses_.window.tmrOutlook;
  on([&] { uses_.mail.Open(Account()); });
  refused_.clear();
  isElsewhereTold_ = false;
  on([&] { timer.interval.Set(ToLong(uses_.options.Interval * 1000.0)); });
  on([&] { timer.enabled.Set(true); });
}

void MailService::tmrOutlook_Timer() {
  if (ticking_ || uses_.compile.Busy() || uses_.session.Busy()) return;
  const auto turn = uses_.compile.TakeTurn();
  if (turn == nullptr) return;
  ticking_ = true;
  const std::shared_ptr<void> done(nullptr, [this](void*) {
    uses_.window.mousePointer.Set(MousePointer::Default);
    ticking_ = serving_ = ending_ = false;
  });
  uses_.window.tmrOutlook.enabled.Set(false);
  RunTick();
}

void MailService::RunTick() {
  const SenderList senders(
      uses_.registry.fnsGetRegistryValue(kProgramKey, mail_setting::kAllowedSenders));
  MailTick tick({uses_.window, uses_.options, uses_.files, uses_.log, uses_.mail, uses_.session,
                 uses_.latest, uses_.compile, uses_.events, senders, refused_,
                 [this] { return ending_; }, [this] { serving_ = true; },
                 [this] { TellElsewhere(); }});
  const auto fail = [&](const RuntimeError& error) {
    const std::string whose = tick.Sender().empty() ? "" : " in the request from " + tick.Sender();
    uses_.log.WriteLog("Email requests are no longer served, because of an error" + whose +
                       " at line " + std::to_string(tick.Line()) + ": " +
                       OnOneLine(error.Description()));
    if (tick.ReportFailure(error)) mnuToolsInBox_Click();
  };
  try {
    tick.Run();
    FinishTick();
  } catch (const RuntimeError& error) {
    fail(error);
  } catch (const std::bad_alloc&) {
    fail(RuntimeError(ErrorNumber::OutOfMemory));
  }
}

// Each look may find it so; one line is enough.
void MailService::TellElsewhere() {
  if (std::exchange(isElsewhereTold_, true)) return;
  uses_.log.WriteLog("Email requests are answered by another program; looking again later");
}

// The user may have switched the service off meanwhile.
void MailService::FinishTick() {
  frmBuilder& window = uses_.window;
  window.tmrOutlook.enabled.Set(window.menu.mnuToolsInBox.checked.Get());
  window.SetStatus("Idle");
  window.menu.mnuFileBuild.enabled.Set(true);
}

}  // namespace gorbex
