#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "platform/windows/outlook_session.h"

namespace gorbex {

/// Outlook, through its automation class. It has its own account: nothing of a MailAccount is
/// used.
class Outlook : public Mail, public EventHandler {
 public:
  /// Each step may take as long as said: Outlook may ask its user whether a program is to send a
  /// mail. The files (for attachments) outlive the object.
  explicit Outlook(const FileReader& files,
                   std::chrono::milliseconds patience = std::chrono::minutes(2))
      : files_(files), patience_(patience) {}

  void Open(const MailAccount& account) override;
  [[nodiscard]] std::unique_ptr<MailFolder> Folder(const std::string& name) override;
  [[nodiscard]] std::unique_ptr<OutgoingMail> CreateReply(const MailItem& to) override;

 private:
  [[nodiscard]] std::shared_ptr<OutlookSession> Session() const;

  const FileReader& files_;
  std::chrono::milliseconds patience_;
  std::shared_ptr<OutlookSession> session_;  ///< null while not open
};

}  // namespace gorbex
