#include "platform/linux/mail/mail.h"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <climits>
#include <cstdlib>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/code_page.h"
#include "platform/linux/mail/account.h"
#include "platform/linux/mail/body_text.h"
#include "platform/linux/mail/imap_folder.h"
#include "platform/linux/mail/mailbox_turn.h"
#include "platform/linux/mail/maildir_folder.h"
#include "platform/linux/mail/reply.h"
#include "platform/linux/mail/server_session.h"
#include "platform/linux/mail/token.h"
#include "platform/linux/mail/transport.h"
#include "platform/mail_address.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// An account as it is used until the next one is opened.
struct OpenAccount {
  MailStore store;
  MailTransport transport;
  Correspondent from;
};

namespace {

std::string HomeFolder() {
  const char* home = std::getenv("HOME");
  if (home != nullptr && *home == '/') return home;
  const auto* user = getpwuid(getuid());
  return user != nullptr ? user->pw_dir : "/";
}

std::string OwnAddress() {
  const auto* user = getpwuid(getuid());
  std::array<char, HOST_NAME_MAX + 1> host{};
  if (gethostname(host.data(), host.size() - 1) != 0 || host.front() == '\0') {
    return std::string(user != nullptr ? user->pw_name : "gorbex") + "@localhost";
  }
  return std::string(user != nullptr ? user->pw_name : "gorbex") + "@" + host.data();
}

// The password is for this program; what it starts does not inherit it.
std::string TakePassword() {
  constexpr const char* kName = "GORBEX_MAIL_PASSWORD";
  const char* value = std::getenv(kName);
  std::string password = value != nullptr ? value : "";
  unsetenv(kName);
  return password;
}

Correspondent SenderOf(const MailAccount& account) {
  if (account.from.empty()) return CorrespondentOf(OwnAddress());
  if (NamesMailAddress(account.from)) return CorrespondentOf(account.from);
  throw RuntimeError::WithDescription(
      ErrorNumber::InvalidCall,
      "The sender of replies (MailFrom) is not a mail address: '" + OnOneLine(account.from) + "'");
}

void RequireMaildir(const MaildirStore& store) {
  std::error_code error;
  if (IsMaildir(store.folder, error)) return;
  if (error) {
    throw RuntimeError::WithDescription(
        ErrorNumber::PermissionDenied,
        FromUtf8Roughly("The Maildir '" + store.folder + "' cannot be read: " + error.message()));
  }
  throw RuntimeError::WithDescription(
      store.isDefault ? ErrorNumber::CannotCreateObject : ErrorNumber::InvalidCall,
      FromUtf8Roughly("There is no Maildir '" + store.folder + "'"));
}

}  // namespace

struct LinuxMail::Parts {
  Parts(const FileReader& fileReader, ToolRunner& toolRunner, Outbox::Uses outboxUses,
        std::chrono::milliseconds longestSilence)
      : files(fileReader),
        tools(toolRunner),
        token(toolRunner),
        worker(longestSilence),
        outbox(std::move(outboxUses)) {}

  const FileReader& files;
  ToolRunner& tools;
  MailToken token;
  Worker worker;
  Outbox outbox;
  std::string password = TakePassword();
  std::shared_ptr<const OpenAccount> account;
  std::weak_ptr<void> turn;

  /// Null while another program has it.
  [[nodiscard]] std::shared_ptr<void> TakeTurn() {
    auto taken = turn.lock();
    if (taken == nullptr) turn = taken = TakeMailboxTurn(Account()->store, HomeFolder());
    return taken;
  }

  [[nodiscard]] std::shared_ptr<const OpenAccount> Account() const {
    if (account != nullptr) return account;
    throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                        "The mail system is not open");
  }
};

namespace {

/// Turns an error of the disk into one of the program's.
template <class Work>
auto Guarded(Work&& work) {
  try {
    return std::forward<Work>(work)();
  } catch (const std::system_error& error) {
    throw RuntimeError::WithDescription(
        ErrorNumber::PathFileAccess,
        FromUtf8Roughly(std::string("The outbox cannot be used: ") + error.what()));
  }
}

/// One folder of an account and the worker that reaches it.
struct FolderAccess {
  void Do(const std::function<void(StoredFolder&)>& work) const {
    if (const auto* maildir = std::get_if<MaildirStore>(&account->store)) {
      worker->Do([&](Patience&) {
        const auto path = MaildirFolder::Find(maildir->folder, name);
        if (!path) RaiseNoFolder(maildir->folder);
        MaildirFolder folder(*path);
        work(folder);
      });
      return;
    }
    token->With(std::get<MailServer>(account->store), [&](const MailServer& server) {
      worker->Do([&](Patience& patience) {
        ImapFolder folder(server, name, patience);
        work(folder);
      });
    });
  }

  [[noreturn]] void RaiseNoFolder(const std::string& maildir) const {
    throw RuntimeError::WithDescription(
        ErrorNumber::PathNotFound,
        FromUtf8Roughly("There is no folder '" + name + "' in the Maildir '" + maildir + "'"));
  }

  std::shared_ptr<const OpenAccount> account;
  std::string name;
  std::shared_ptr<Worker> worker;
  std::shared_ptr<MailToken> token;
  std::shared_ptr<void> turn;
};

class LinuxMailItem : public MailItem {
 public:
  LinuxMailItem(std::shared_ptr<FolderAccess> folder, ListedMail mail)
      : folder_(std::move(folder)), mail_(std::move(mail)) {}

  [[nodiscard]] std::string Subject() const override { return mail_.header.subject; }
  [[nodiscard]] bool UnRead() const override { return !mail_.isRead; }
  void MarkRead() override {
    folder_->Do([&](StoredFolder& folder) { folder.Mark(mail_.id, MailMark::Read); });
    mail_.isRead = true;
  }
  [[nodiscard]] bool IsFlagged() const override { return mail_.isFlagged; }
  void Flag() override {
    folder_->Do([&](StoredFolder& folder) { folder.Mark(mail_.id, MailMark::Flagged); });
    mail_.isFlagged = true;
  }
  [[nodiscard]] std::optional<std::string> Body() override {
    std::optional<std::string> text;
    folder_->Do([&](StoredFolder& folder) {
      const auto mail = folder.Read(mail_.id);
      if (mail) text = BodyText(*mail);
    });
    return text;
  }
  [[nodiscard]] std::string SenderName() const override { return mail_.header.senderName; }
  [[nodiscard]] std::string SenderAddress() const override { return mail_.header.senderAddress; }
  [[nodiscard]] std::string ReplyAddress() const override { return mail_.header.replyAddress; }
  [[nodiscard]] bool IsAutomatic() const override { return mail_.header.isAutomatic; }

  [[nodiscard]] const MailHeader& Header() const { return mail_.header; }

 private:
  std::shared_ptr<FolderAccess> folder_;
  ListedMail mail_;
};

using LinuxMailFolder = ListedFolder<LinuxMailItem, FolderAccess, ListedMail>;

}  // namespace

LinuxMail::LinuxMail(const FileReader& files, ToolRunner& tools, Outbox::Uses outbox,
                     std::chrono::milliseconds longestSilence)
    : parts_(std::make_shared<Parts>(files, tools, std::move(outbox), longestSilence)) {
  StartMailLibrary();
}

LinuxMail::~LinuxMail() = default;

void LinuxMail::Handle(EventPump& events) {
  parts_->worker.Handle(events);
}

void LinuxMail::Open(const MailAccount& account) {
  parts_->account.reset();
  parts_->turn.reset();
  parts_->token.Use(ToUtf8(account.tokenCommand));
  const MailDefaults defaults{HomeFolder(), parts_->password};
  OpenAccount opened{StoreOf(account, defaults), TransportOf(account, defaults), SenderOf(account)};
  if (const auto* maildir = std::get_if<MaildirStore>(&opened.store)) RequireMaildir(*maildir);
  parts_->account = std::make_shared<const OpenAccount>(std::move(opened));
}

std::unique_ptr<MailFolder> LinuxMail::Folder(const std::string& name) {
  auto turn = parts_->TakeTurn();
  if (turn == nullptr) return nullptr;
  const auto access = std::make_shared<FolderAccess>(FolderAccess{
      parts_->Account(), ToUtf8(name), std::shared_ptr<Worker>(parts_, &parts_->worker),
      std::shared_ptr<MailToken>(parts_, &parts_->token), std::move(turn)});
  std::vector<ListedMail> mails;
  access->Do([&](StoredFolder& folder) { mails = folder.List(); });
  return std::make_unique<LinuxMailFolder>(access, std::move(mails));
}

std::unique_ptr<OutgoingMail> LinuxMail::CreateReply(const MailItem& to) {
  const auto account = parts_->Account();
  MailMessage start{account->from};
  Correspondent sender;
  if (const auto* item = dynamic_cast<const LinuxMailItem*>(&to)) {
    start.answered = item->Header().messageId;
    start.references = item->Header().references;
    sender = {{}, item->Header().replyAddress};
  }
  return std::make_unique<Reply>(
      std::move(start), to.SenderName(), std::move(sender), parts_->files,
      [account, parts = parts_](const MailMessage& message) {
        if (const auto* program = std::get_if<SendmailProgram>(&account->transport)) {
          SendWithProgram(message, *program, parts->worker, parts->tools);
        } else {
          Guarded([&] { parts->outbox.Put(Prepared(message)); });
        }
      });
}

std::vector<std::string> LinuxMail::SendWaiting() {
  const auto account = parts_->Account();
  const auto* server = std::get_if<MailServer>(&account->transport);
  if (server == nullptr) return {};
  return Guarded([&] {
    return parts_->outbox.Deliver([&](const WaitingMail& mail, const std::string& text) {
      try {
        return parts_->token.With(*server, [&](const MailServer& ready) {
          return HandOver(mail, text, ready, parts_->worker);
        });
      } catch (const RuntimeError& error) {
        return Delivery{Delivery::Outcome::ServerAway, error.Description()};
      }
    });
  });
}

bool LinuxMail::TooManyWait() const {
  return Guarded([&] { return parts_->outbox.IsFull(); });
}

}  // namespace gorbex
