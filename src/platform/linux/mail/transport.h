#pragma once

#include "platform/linux/mail/account.h"
#include "platform/linux/mail/mail_message.h"
#include "platform/linux/mail/worker.h"
#include "platform/tool.h"

namespace gorbex {

/// Hands a message to the server or program. Error 440 in its own words when that fails; whether it
/// was sent is then not known.
void SendMessage(const MailMessage& message, const MailTransport& transport, Worker& worker,
                 ToolRunner& tools);

}  // namespace gorbex
