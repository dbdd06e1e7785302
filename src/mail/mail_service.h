#pragma once

#include <set>
#include <string>

#include "build/compile.h"
#include "core/activity_log.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/procedure.h"
#include "core/registry_tools.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Builds on request by mail: while the service is on, the main window's timer looks for new
/// requests again and again. An error that no request explains switches it off.
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
    EventPump& events;
  };

  explicit MailService(const Uses& uses) : uses_(uses) {}

  /// Switches the service on or off. It stays off when the mail system cannot be used.
  void mnuToolsInBox_Click();

  /// Performs and answers the new requests. Does nothing while something else compiles or works
  /// with source control: the next tick will.
  void tmrOutlook_Timer();

  /// Whether a request is being performed.
  [[nodiscard]] bool Serving() const { return serving_; }

  /// Ends the tick when the request that is being performed is answered.
  void EndTick() { ending_ = ticking_; }

 private:
  [[nodiscard]] MailAccount Account() const;
  void Start(Procedure& on);
  void RunTick();
  void FinishTick();
  void TellElsewhere();

  Uses uses_;
  std::set<std::string> refused_;
  bool ticking_ = false;
  bool serving_ = false;
  bool ending_ = false;
  bool isElsewhereTold_ = false;
};

}  // namespace gorbex
