#pragma once

#include <memory>
#include <string>

#include "platform/linux/mail/account.h"

namespace gorbex {

/// Keeps every other program of this machine from looking through a mailbox while it is held, so
/// that no mail is answered twice: of a Maildir all programs, of a server's mailbox those of this
/// user. Null while another program holds it. Without effect where nothing can be locked.
[[nodiscard]] std::shared_ptr<void> TakeMailboxTurn(const MailStore& store,
                                                    const std::string& homeFolder);

}  // namespace gorbex
