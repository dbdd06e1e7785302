#pragma once

#include <memory>
#include <set>
#include <string>

#include "build/compile.h"
#include "core/activity_log.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "core/work.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "scc/source_safe_session.h"

namespace gorbex {

class MailTick;

/// Builds on request by mail: while the service is on, the main window's timer looks for new
/// requests again and again. An unexpected error switches it off.
class MailService {
 public:
  struct Uses {
    frmBuilder& window;
    clsOptions& options;
    RegistryTools& registry;
    const FileReader& files;
    ActivityLog& log;
    ErrorReport& report;
    Mail& mail;
    SourceSafeSession& session;
    LatestSource& latest;
    Compile& compile;
    Work& work;
    EventPump& events;
  };

  explicit MailService(const Uses& uses);
  ~MailService();

  /// Switches the service on or off. It stays off when the mail system cannot be used.
  void mnuToolsInBox_Click();

  /// Performs and answers the new requests. Does nothing while something else compiles or works
  /// with source control; the next tick tries again.
  void tmrOutlook_Timer();

  /// Whether the server of the mailbox went away; requests wait until it is back.
  [[nodiscard]] bool MailboxIsAway() const { return isAway_; }

 private:
  [[nodiscard]] MailAccount Account() const;
  void Start(Procedure& on);
  void RunTick();
  void FinishTick();
  [[nodiscard]] std::unique_ptr<MailTick> NewTick();
  void Fail(MailTick& tick, const RuntimeError& error);
  void TellOnce(const std::string& why);
  void Leave(std::unique_ptr<MailTick> tick, const MailboxAway& reason);
  void NoteBack();

  Uses uses_;
  std::set<std::string> refused_;
  std::set<std::string> told_;
  std::unique_ptr<MailTick> kept_;  ///< marks its request when the server is back; else null
  bool hasSeenMailbox_ = false;
  bool isAway_ = false;
};

}  // namespace gorbex
