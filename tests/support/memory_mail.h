#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/file_system.h"
#include "platform/mail.h"
#include "platform/runtime_error.h"
#include "tests/support/journal.h"

namespace gorbex::test {

/// A mail system in memory with one request folder. Journals "mail open STORE", "mail folder NAME",
/// "mail read NUMBER" and "mail unread NUMBER" (the marks), and "mail send SUBJECT to NAME, NAME".
class MemoryMail : public Mail {
 public:
  MemoryMail(Journal& journal, const FileReader& files) : journal_(journal), files_(files) {}

  struct Received {
    std::string subject = "build request";
    std::string body{};
    std::string senderName = "Anna Berg";
    std::string senderAddress = "anna@dev.example";
    std::string replyAddress = "anna@dev.example";
    bool isUnread = true;
    bool isFlagged = false;
    bool isAutomatic = false;
    bool isGone = false;  ///< vanished after the folder was opened
  };
  std::vector<Received> received;
  std::string folderName = "Builder";
  bool isTaken = false;           ///< another program looks through the mailbox
  bool isFull = false;            ///< too many mails wait to be sent
  std::vector<std::string> news;  ///< of the mails that wait to be sent
  std::function<void()> onOpen;   ///< what happens while the mail system is opened

  struct Sent {
    std::vector<std::string> recipients{};
    std::string subject{};
    std::string body{};
    std::vector<std::pair<std::string, std::string>> attachments{};  ///< path and bytes
  };
  std::vector<Sent> sent;

  /// Lets one of the next calls of an operation fail: "open", "folder", "item", "mark", "body",
  /// "reply", "recipient", "attach" or "send".
  void Fail(const std::string& operation, const RuntimeError& error, int call = 1) {
    faults_.insert_or_assign(operation, Fault{call, [error] { throw error; }});
  }

  /// Lets the server of the mailbox be away at the next call of an operation.
  void GoAway(const std::string& operation) {
    faults_.insert_or_assign(operation, Fault{1, [] { throw MailboxAway("The server is gone"); }});
  }

  void Open(const MailAccount& account) override {
    account_.reset();
    if (onOpen) std::exchange(onOpen, nullptr)();
    RaiseFault("open");
    account_ = account;
    journal_.push_back("mail open " + account.store);
  }

  [[nodiscard]] std::unique_ptr<MailFolder> Folder(const std::string& name) override {
    RaiseFault("folder");
    RequireOpen();
    if (isTaken) return nullptr;
    if (name != folderName) throw RuntimeError(ErrorNumber::PathNotFound, name);
    journal_.push_back("mail folder " + name);
    return std::make_unique<OpenFolder>(*this);
  }

  [[nodiscard]] std::vector<std::string> SendWaiting() override { return std::exchange(news, {}); }
  [[nodiscard]] bool TooManyWait() const override { return isFull; }

  [[nodiscard]] std::unique_ptr<OutgoingMail> CreateReply(const MailItem& to) override {
    RaiseFault("reply");
    RequireOpen();
    return std::make_unique<Reply>(*this, to.SenderName());
  }

 private:
  struct Fault {
    int call;
    std::function<void()> raise;
  };

  class Item : public MailItem {
   public:
    Item(MemoryMail& mail, std::size_t index)
        : mail_(mail), index_(index), then_(mail.received[index]) {}

    [[nodiscard]] std::string Subject() const override { return then_.subject; }
    [[nodiscard]] bool UnRead() const override { return then_.isUnread; }
    void MarkRead() override {
      mail_.RaiseFault("mark");
      then_.isUnread = false;
      auto& now = mail_.received[index_];
      if (now.isGone) return;
      now.isUnread = false;
      mail_.journal_.push_back("mail read " + std::to_string(index_ + 1));
    }
    [[nodiscard]] bool IsFlagged() const override { return then_.isFlagged; }
    void Flag() override {
      then_.isFlagged = mail_.received[index_].isFlagged = true;
      mail_.journal_.push_back("mail flag " + std::to_string(index_ + 1));
    }
    [[nodiscard]] std::optional<std::string> Body() override {
      mail_.RaiseFault("body");
      const auto& now = mail_.received[index_];
      return now.isGone ? std::nullopt : std::optional(now.body);
    }
    [[nodiscard]] std::string SenderName() const override { return then_.senderName; }
    [[nodiscard]] std::string SenderAddress() const override { return then_.senderAddress; }
    [[nodiscard]] std::string ReplyAddress() const override { return then_.replyAddress; }
    [[nodiscard]] bool IsAutomatic() const override { return then_.isAutomatic; }

   private:
    MemoryMail& mail_;
    std::size_t index_;
    Received then_;
  };

  class OpenFolder : public MailFolder {
   public:
    explicit OpenFolder(MemoryMail& mail) : mail_(mail), count_(mail.received.size()) {}

    [[nodiscard]] std::size_t Count() const override { return count_; }
    [[nodiscard]] std::unique_ptr<MailItem> Item(std::size_t number) override {
      mail_.RaiseFault("item");
      if (number < 1 || number > count_) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
      if (mail_.received[number - 1].isGone) return nullptr;
      return std::make_unique<MemoryMail::Item>(mail_, number - 1);
    }

   private:
    MemoryMail& mail_;
    std::size_t count_;
  };

  class Reply : public OutgoingMail {
   public:
    Reply(MemoryMail& mail, std::string name) : mail_(mail), name_(std::move(name)) {}

    void AddRecipient(const std::string& name) override {
      mail_.RaiseFault("recipient");
      draft_.recipients.push_back(name);
    }
    [[nodiscard]] std::size_t RecipientCount() const override { return draft_.recipients.size(); }
    void RemoveRecipient(std::size_t number) override {
      if (number < 1 || number > draft_.recipients.size()) {
        throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
      }
      draft_.recipients.erase(draft_.recipients.begin() + static_cast<std::ptrdiff_t>(number) - 1);
    }
    void SetSubject(const std::string& subject) override { draft_.subject = subject; }
    void SetBody(const std::string& body) override { draft_.body = body; }
    void AddAttachment(const std::string& path) override {
      mail_.RaiseFault("attach");
      if (!FileExists(mail_.files_, path)) throw RuntimeError(ErrorNumber::FileNotFound, path);
      draft_.attachments.emplace_back(path, mail_.files_.Read(path));
    }
    void RemoveAttachments() override { draft_.attachments.clear(); }
    void Send() override {
      mail_.RaiseFault("send");
      std::string names;
      for (const auto& name : draft_.recipients) {
        if (name != name_ && name.find('@') == std::string::npos) {
          throw RuntimeError::WithDescription(ErrorNumber::InvalidCall,
                                              "cannot resolve recipient '" + name + "'");
        }
        names.append(names.empty() ? "" : ", ").append(name);
      }
      if (names.empty()) {
        throw RuntimeError::WithDescription(ErrorNumber::InvalidCall, "The mail has no recipient");
      }
      mail_.journal_.push_back("mail send " + draft_.subject + " to " + names);
      mail_.sent.push_back(draft_);
    }

   private:
    MemoryMail& mail_;
    std::string name_;
    Sent draft_;
  };

  void RequireOpen() const {
    if (account_) return;
    throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                        "The mail system is not open");
  }
  void RaiseFault(const std::string& operation) {
    const auto fault = faults_.find(operation);
    if (fault == faults_.end() || --fault->second.call > 0) return;
    const auto raise = fault->second.raise;
    faults_.erase(fault);
    raise();
  }

  Journal& journal_;
  const FileReader& files_;
  std::optional<MailAccount> account_;
  std::map<std::string, Fault> faults_;
};

}  // namespace gorbex::test
