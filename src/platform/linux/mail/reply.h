#pragma once

#include <functional>

#include "platform/file_system.h"
#include "platform/linux/mail/mail_message.h"
#include "platform/mail.h"

namespace gorbex {

/// A mail that answers another one.
class Reply : public OutgoingMail {
 public:
  using Sender = std::function<void(const MailMessage&)>;

  /// The name means the correspondent among the recipients. The files outlive the reply.
  Reply(MailMessage start, std::string name, Correspondent correspondent, const FileReader& files,
        Sender send);

  void AddRecipient(const std::string& name) override;
  [[nodiscard]] std::size_t RecipientCount() const override { return message_.to.size(); }
  void RemoveRecipient(std::size_t number) override;
  void SetSubject(const std::string& subject) override { message_.subject = subject; }
  void SetBody(const std::string& body) override { message_.body = body; }
  void AddAttachment(const std::string& path) override;
  void RemoveAttachments() override { message_.attachments.clear(); }
  void Send() override;

 private:
  MailMessage message_;
  std::string name_;
  Correspondent correspondent_;
  const FileReader& files_;
  Sender send_;
};

}  // namespace gorbex
