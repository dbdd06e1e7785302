#pragma once

#include "platform/linux/mail/account.h"
#include "platform/linux/mail/mail_message.h"
#include "platform/linux/mail/worker.h"
#include "platform/outbox.h"
#include "platform/tool.h"

namespace gorbex {

/// Hands a message to the program. Error 440 in its own words when that fails; whether it was sent
/// is then not known.
void SendWithProgram(const MailMessage& message, const SendmailProgram& program, Worker& worker,
                     ToolRunner& tools);

/// The message as it waits for a server.
[[nodiscard]] WaitingMail Prepared(const MailMessage& message);

/// Hands one text of a mail to the server. Throws LoginRefused when the server refuses the login.
[[nodiscard]] Delivery HandOver(const WaitingMail& mail, const std::string& text,
                                const MailServer& server, Worker& worker);

}  // namespace gorbex
