#pragma once

#include <memory>
#include <string>

#include "platform/file_system.h"
#include "platform/mail.h"
#include "platform/windows/outlook_session.h"

namespace gorbex {

/// A new mail of Outlook's that answers another one.
class OutlookReply : public OutgoingMail {
 public:
  /// The files outlive the reply.
  OutlookReply(std::shared_ptr<OutlookSession> session, const MailItem& to,
               const FileReader& files);

  void AddRecipient(const std::string& name) override;
  [[nodiscard]] std::size_t RecipientCount() const override;
  void RemoveRecipient(std::size_t number) override;
  void SetSubject(const std::string& subject) override { Let("Subject", subject); }
  void SetBody(const std::string& body) override { Let("Body", body); }
  void AddAttachment(const std::string& path) override;
  void RemoveAttachments() override;
  void Send() override;

 private:
  void Let(const std::string& property, const std::string& value);

  std::shared_ptr<OutlookSession> session_;
  std::string senderName_;
  std::string replyAddress_;
  const FileReader& files_;
  KeptObject mail_;
};

}  // namespace gorbex
