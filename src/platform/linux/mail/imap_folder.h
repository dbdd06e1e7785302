#pragma once

#include <string>

#include "platform/linux/mail/account.h"
#include "platform/linux/mail/mail_store.h"
#include "platform/linux/mail/worker.h"

namespace gorbex {

/// A folder of an IMAP server. Every operation has its own connection: between two of them a
/// build may run that outlasts any server's patience.
class ImapFolder : public StoredFolder {
 public:
  /// A folder of this name inside the inbox or, when there is none, next to the inbox. The server
  /// and the patience outlive this object.
  ImapFolder(const MailServer& server, std::string name, Patience& patience)
      : server_(server), name_(std::move(name)), patience_(patience) {}

  /// Error 76 when there is no such folder.
  [[nodiscard]] std::vector<ListedMail> List() override;
  [[nodiscard]] std::optional<std::string> Read(const std::string& id) override;
  void Mark(const std::string& id, MailMark mark) override;

 private:
  const MailServer& server_;
  std::string name_;
  Patience& patience_;
};

}  // namespace gorbex
