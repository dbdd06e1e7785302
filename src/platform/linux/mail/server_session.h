#pragma once

#include <functional>
#include <vmime/net/service.hpp>
#include <vmime/net/session.hpp>
#include <vmime/security/authenticator.hpp>

#include "platform/linux/mail/account.h"
#include "platform/linux/mail/worker.h"
#include "platform/mail.h"

namespace gorbex {

/// A server that is there but refuses the login.
class LoginRefused : public MailboxAway {
 public:
  using MailboxAway::MailboxAway;
};

/// Makes the library ready for use by more than one thread.
void StartMailLibrary();

/// The login at a server, with a password or a token.
[[nodiscard]] vmime::shared_ptr<vmime::security::authenticator> LoginAt(const MailServer& server);

/// Lets a service of the mail library ("imap", "smtp") reach its server: login, encryption,
/// certificates and time limits. The patience outlives the service's connection.
void Prepare(vmime::net::service& service, const MailServer& server, const std::string& address,
             Patience& patience);

/// Calls back with the addresses of the server's host until one connects. The library's own look-up
/// of a name cannot be given up while it waits; it gets only numbers.
void AtFirstAddress(const MailServer& server,
                    const std::function<void(const std::string& address)>& connect);

/// Talks to a server. A failure becomes a RuntimeError (440) that names the server and quotes its
/// words, without the password; a MailboxAway unless the server refused a command.
void TalkTo(const MailServer& server, const std::function<void()>& talk);

}  // namespace gorbex
