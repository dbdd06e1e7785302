#pragma once

#include <optional>
#include <string>

#include "platform/linux/mail/account.h"
#include "platform/linux/mail/server_session.h"
#include "platform/tool.h"

namespace gorbex {

/// The token that some servers want in place of a password. A command of the user prints it, and is
/// asked again when a server no longer takes it.
class MailToken {
 public:
  explicit MailToken(ToolRunner& tools) : tools_(tools) {}

  /// The command (UTF-8) as its user typed it; no shell sees it.
  void Use(const std::string& command);

  /// Calls the work with the server and a token, again with a new token when an older one is
  /// refused. A MailboxAway when there is no token.
  template <class Work>
  auto With(const MailServer& server, const Work& work) {
    const bool isOld = token_.has_value();
    try {
      return work(Ready(server));
    } catch (const LoginRefused&) {
      token_.reset();
      if (!server.wantsToken || !isOld) throw;
    }
    return work(Ready(server));
  }

 private:
  [[nodiscard]] MailServer Ready(const MailServer& server);
  [[nodiscard]] std::string Asked() const;

  ToolRunner& tools_;
  std::string command_;
  std::optional<std::string> token_;
};

}  // namespace gorbex
