#include "platform/windows/outlook_reply.h"

#include <utility>

#include "platform/runtime_error.h"
#include "platform/windows/full_path.h"
#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

constexpr std::int32_t kMail = 0;

}  // namespace

OutlookReply::OutlookReply(std::shared_ptr<OutlookSession> session, const MailItem& to,
                           const FileReader& files)
    : session_(std::move(session)),
      senderName_(to.SenderName()),
      replyAddress_(to.ReplyAddress()),
      files_(files),
      mail_(session_->thread.Do([application = session_->application] {
        return AutomationThread::Keep(application->Ask("CreateItem", {kMail}).Object());
      })) {}

void OutlookReply::AddRecipient(const std::string& name) {
  const bool isSender = name == senderName_ && !replyAddress_.empty();
  session_->thread.Do([mail = mail_, who = isSender ? replyAddress_ : name] {
    mail->Property("Recipients").Object().Do("Add", {who});
  });
}

std::size_t OutlookReply::RecipientCount() const {
  const auto count = session_->thread.Do(
      [mail = mail_] { return mail->Property("Recipients").Object().Property("Count").Long(); });
  return static_cast<std::size_t>(count);
}

void OutlookReply::RemoveRecipient(std::size_t number) {
  if (number < 1 || number > RecipientCount()) {
    throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  }
  session_->thread.Do([mail = mail_, which = static_cast<std::int32_t>(number)] {
    mail->Property("Recipients").Object().Do("Remove", {which});
  });
}

void OutlookReply::AddAttachment(const std::string& path) {
  // Outlook has its own current folder.
  const auto fullPath = FullPathOf(path);
  const auto file = fullPath ? FromWide(*fullPath) : std::nullopt;
  if (!file || !FileExists(files_, path)) throw RuntimeError(ErrorNumber::FileNotFound, path);
  session_->thread.Do(
      [mail = mail_, file = *file] { mail->Property("Attachments").Object().Do("Add", {file}); });
}

void OutlookReply::RemoveAttachments() {
  session_->thread.Do([mail = mail_] {
    const auto attachments = mail->Property("Attachments").Object();
    for (auto left = attachments.Property("Count").Long(); left > 0; --left) {
      attachments.Do("Remove", {1});
    }
  });
}

void OutlookReply::Send() {
  session_->thread.Do([mail = mail_] { mail->Do("Send"); });
}

void OutlookReply::Let(const std::string& property, const std::string& value) {
  session_->thread.Do([mail = mail_, property, value] { mail->Let(property, value); });
}

}  // namespace gorbex
