#pragma once

#include <functional>
#include <memory>
#include <set>
#include <source_location>
#include <string>
#include <utility>

#include "build/compile.h"
#include "core/activity_log.h"
#include "core/latest_source.h"
#include "core/main_window.h"
#include "core/options.h"
#include "core/work.h"
#include "mail/mail_reply.h"
#include "mail/mail_request.h"
#include "mail/sender_list.h"
#include "platform/code_page.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// One look into the request folder: every new request is performed and answered. A request without
/// a project uses the project of the request before it.
class MailTick {
 public:
  struct Uses {
    frmBuilder& window;
    clsOptions& options;
    const FileReader& files;
    ActivityLog& log;
    Mail& mail;
    SourceSafeSession& session;
    LatestSource& latest;
    Compile& compile;
    EventPump& events;
    SenderList senders;
    std::set<std::string>& refused;  ///< what the log has said of requests that were passed over
    Work& work;
    std::function<void(const std::string& why)> waits;  ///< told when requests are left for later
  };

  explicit MailTick(const Uses& uses) : uses_(uses) {}

  /// The error of the step that failed, which then has no answer yet. A MailboxAway is not a
  /// failure: requests have to wait.
  void Run();

  /// Whether the request folder has been opened.
  [[nodiscard]] bool SawMailbox() const { return sawMailbox_; }

  /// Whether a request was performed whose mail could not be marked before its server went away.
  /// The tick then has to be kept until Resume() has marked and answered it.
  [[nodiscard]] bool HasUnmarked() const { return isPerformed_; }

  /// The tick is kept, and no request is being performed until it is resumed.
  void Rest() { serving_.reset(); }
  void Resume();

  /// Replies to the failed request with the error. False when there is nobody to tell.
  bool ReportFailure(const RuntimeError& error);

  /// The source line of the step that failed.
  [[nodiscard]] unsigned Line() const { return line_; }

  /// The sender of the failed request, on one line; empty when no request failed.
  [[nodiscard]] const std::string& Sender() const { return sender_; }

 private:
  [[nodiscard]] bool IsRequest(const MailItem& mail);
  [[nodiscard]] bool IsWelcome(const MailItem& mail);
  void NoteRefusal(const MailItem& mail, const std::string& reason);
  void Serve();
  [[nodiscard]] bool FindProject();
  void UseLoadedPath();
  void Get();
  void Build();
  void FailBuild(const std::string& problem);
  [[nodiscard]] std::string ProblemWithFolder() const;
  void Finish();
  void Answer();
  void SendWaiting();
  void FlagFailed();
  void Attach();
  void NoteResultLog();
  void Log(const std::string& text) { uses_.log.WriteLog(OnOneLine(text)); }
  [[nodiscard]] std::string BuiltFile() const;
  [[nodiscard]] std::string FailureText(const RuntimeError& error) const;
  [[nodiscard]] bool AddressFailure();

  /// Runs a step and remembers its line for the report of its failure.
  template <class S>
  auto At(S&& step, std::source_location place = std::source_location::current()) {
    line_ = place.line();
    return std::forward<S>(step)();
  }

  Uses uses_;
  unsigned line_ = 0;
  std::shared_ptr<void> serving_;   ///< from the first request on
  std::unique_ptr<MailItem> mail_;  ///< the request that is being performed
  std::unique_ptr<OutgoingMail> reply_;
  MailRequest request_;
  MailReply text_;
  std::string sender_;
  std::string strProject_;
  std::string strLocal_;
  bool RequestSucceeded_ = false;
  bool isPerformed_ = false;
  bool sawMailbox_ = false;
};

}  // namespace gorbex
