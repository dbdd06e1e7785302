#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "platform/outbox.h"
#include "platform/tool.h"

namespace gorbex {

/// Mail on Linux: a Maildir or an IMAP server, answers by sendmail or an SMTP server. Servers are
/// talked to in short conversations, none of which lasts from one operation to the next.
class LinuxMail : public Mail {
 public:
  /// Takes the password for accounts without one from GORBEX_MAIL_PASSWORD, which no process
  /// started later inherits. Files (for attachments) and tools (for sendmail) outlive the object.
  /// Mails for a server wait in the outbox until it takes them.
  LinuxMail(const FileReader& files, ToolRunner& tools, Outbox::Uses outbox,
            std::chrono::milliseconds longestSilence = std::chrono::seconds(30));
  ~LinuxMail() override;

  /// From now on these events are handled while a server is waited for; the pump outlives the
  /// calls.
  void Handle(EventPump& events);

  void Open(const MailAccount& account) override;
  [[nodiscard]] std::unique_ptr<MailFolder> Folder(const std::string& name) override;
  [[nodiscard]] std::unique_ptr<OutgoingMail> CreateReply(const MailItem& to) override;
  [[nodiscard]] std::vector<std::string> SendWaiting() override;
  [[nodiscard]] bool TooManyWait() const override;

 private:
  struct Parts;
  std::shared_ptr<Parts> parts_;
};

}  // namespace gorbex
