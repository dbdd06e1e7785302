#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/runtime_error.h"

namespace gorbex {

// The mail system of the machine: one folder that requests arrive in, and the mails that answer
// them. Texts are code-page bytes with CR LF between lines; characters outside the code page become
// "?". Every operation that can fail says so as a RuntimeError in the mail system's own words, in
// which there is never a password. Operations let the user interface act while they wait, and give
// up after a while: none waits forever.

/// Where mails come from and go to. A system that has its own account (Outlook) does not need it.
struct MailAccount {
  std::string store;           ///< URL of the mail store; empty for the user's own Maildir
  std::string transport;       ///< URL of the transport; empty for the machine's sendmail
  std::string from;            ///< address of the sender; empty for the user's own
  std::string tokenCommand{};  ///< prints the token of a server that takes no passwords

  bool operator==(const MailAccount&) const = default;
};

/// The server of a mailbox is away: it cannot be reached, is silent, takes no login or hangs up.
/// The request itself was in order and may succeed later.
class MailboxAway : public RuntimeError {
 public:
  explicit MailboxAway(const std::string& description)
      : RuntimeError(WithDescription(ErrorNumber::AutomationError, description)) {}
};

/// A mail in the request folder. Subject, sender and mark are those of the moment when the folder
/// was opened; the body is read when asked for.
class MailItem {
 public:
  virtual ~MailItem() = default;

  [[nodiscard]] virtual std::string Subject() const = 0;
  [[nodiscard]] virtual bool UnRead() const = 0;

  /// Marks the mail in the folder as read. A mail that vanished meanwhile needs no mark.
  virtual void MarkRead() = 0;

  /// Whether the mail is flagged, so that somebody has to look at it before it is served again.
  [[nodiscard]] virtual bool IsFlagged() const = 0;

  /// Flags the mail in the folder. A mail that vanished meanwhile needs no flag.
  virtual void Flag() = 0;

  /// The text of the mail; nothing when the mail vanished meanwhile.
  [[nodiscard]] virtual std::optional<std::string> Body() = 0;

  /// How the mail names its sender: the display name, or the address of a mail without one.
  [[nodiscard]] virtual std::string SenderName() const = 0;

  /// "user@domain" as the mail claims it; empty when the system does not tell.
  [[nodiscard]] virtual std::string SenderAddress() const = 0;

  /// The address that an answer goes to, or a name for it; empty when nobody can be answered.
  [[nodiscard]] virtual std::string ReplyAddress() const = 0;

  /// True for mails that a program sent by itself (notices of absence, bounces, lists): answers to
  /// these could go back and forth forever.
  [[nodiscard]] virtual bool IsAutomatic() const = 0;
};

/// A new mail that is being written.
class OutgoingMail {
 public:
  virtual ~OutgoingMail() = default;

  /// Adds the recipient of that name: the sender of the mail that is being answered, or an address.
  /// A name that means nobody is an error when the mail is sent.
  virtual void AddRecipient(const std::string& name) = 0;
  [[nodiscard]] virtual std::size_t RecipientCount() const = 0;

  /// Numbered from 1. Error 9 when there is no such recipient.
  virtual void RemoveRecipient(std::size_t number) = 0;

  virtual void SetSubject(const std::string& subject) = 0;
  virtual void SetBody(const std::string& body) = 0;

  /// Attaches a copy of a file (Windows path), byte for byte. Error 53 when it cannot be read
  /// or is too large for a mail.
  virtual void AddAttachment(const std::string& path) = 0;

  virtual void RemoveAttachments() = 0;

  /// Sends the mail, or lets it wait until its server takes it. The object cannot be used
  /// afterwards.
  virtual void Send() = 0;
};

/// The request folder as it was when it was opened.
class MailFolder {
 public:
  virtual ~MailFolder() = default;

  [[nodiscard]] virtual std::size_t Count() const = 0;

  /// Numbered from 1, in the folder's order. Null when the mail vanished meanwhile; error 9 when
  /// there never was one of that number.
  [[nodiscard]] virtual std::unique_ptr<MailItem> Item(std::size_t number) = 0;
};

/// A folder whose mails are made of a way to reach the folder, which they share, and of a list that
/// was read when it was opened.
template <class Made, class Access, class Listed>
class ListedFolder : public MailFolder {
 public:
  ListedFolder(std::shared_ptr<Access> access, std::vector<Listed> mails)
      : access_(std::move(access)), mails_(std::move(mails)) {}

  [[nodiscard]] std::size_t Count() const override { return mails_.size(); }
  [[nodiscard]] std::unique_ptr<MailItem> Item(std::size_t number) override {
    if (number < 1 || number > mails_.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    return std::make_unique<Made>(access_, mails_[number - 1]);
  }

 private:
  std::shared_ptr<Access> access_;
  std::vector<Listed> mails_;
};

class Mail {
 public:
  virtual ~Mail() = default;

  /// Prepares the mail system for use, again whenever the account changes. Error 429 when there is
  /// none, error 5 with the reason when the account names nothing that can be used.
  virtual void Open(const MailAccount& account) = 0;

  /// A folder below the inbox, kept to this program while it or one of its mails lives: null while
  /// another one looks through the same mailbox. Error while not open, or when there is no such
  /// folder.
  [[nodiscard]] virtual std::unique_ptr<MailFolder> Folder(const std::string& name) = 0;

  /// A mail that answers another one, which need not outlive it. Error while not open.
  [[nodiscard]] virtual std::unique_ptr<OutgoingMail> CreateReply(const MailItem& to) = 0;

  // A system that sends waiting mails by itself does not implement the following.

  /// Sends the mails that wait for their server and are due. Returns a line for the log for each
  /// thing that somebody should know.
  [[nodiscard]] virtual std::vector<std::string> SendWaiting() { return {}; }

  /// Whether so many mails wait that requests should wait, too.
  [[nodiscard]] virtual bool TooManyWait() const { return false; }
};

}  // namespace gorbex
