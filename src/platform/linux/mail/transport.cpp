#include "platform/linux/mail/transport.h"

#include <algorithm>
#include <array>
#include <vmime/mailboxList.hpp>
#include <vmime/net/smtp/SMTPExceptions.hpp>
#include <vmime/net/transport.hpp>
#include <vmime/utility/inputStreamStringAdapter.hpp>

#include "platform/code_page.h"
#include "platform/linux/mail/server_session.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr auto kSendmailPatience = 60s;

vmime::mailbox Envelope(const std::string& address) {
  return vmime::mailbox(vmime::emailAddress(address));
}

void SendToServer(const WaitingMail& mail, std::string text, const MailServer& server,
                  Patience& patience) {
  // The protocol adds the last line end.
  if (text.ends_with("\r\n")) text.resize(text.size() - 2);
  vmime::mailboxList recipients;
  for (const auto& to : mail.to) {
    recipients.appendMailbox(vmime::make_shared<vmime::mailbox>(Envelope(to)));
  }
  const bool isSecure = server.encryption == Encryption::FromTheStart;
  vmime::shared_ptr<vmime::net::transport> transport;
  AtFirstAddress(server, [&](const std::string& address) {
    transport = vmime::net::session::create()->getTransport(
        vmime::utility::url(isSecure ? "smtps" : "smtp", server.host), LoginAt(server));
    Prepare(*transport, server, address, patience);
    transport->connect();
  });
  vmime::utility::inputStreamStringAdapter in(text);
  transport->send(Envelope(mail.from), recipients, in, text.size());
  try {
    transport->disconnect();
  } catch (const vmime::exception&) {
    // The server has taken the mail; how it takes its leave is its own affair.
  }
}

// A refusal is for good when its code begins with 5, and tells of the mail unless it asks for a
// login or says that the server goes away.
Delivery::Outcome Meaning(const vmime::net::smtp::SMTPCommandError& error) {
  using Outcome = Delivery::Outcome;
  constexpr std::array kOfTheServer{421, 454, 530, 534, 535, 538};
  const int code = error.statusCode();
  if (error.command() == "STARTTLS" ||
      std::find(kOfTheServer.begin(), kOfTheServer.end(), code) != kOfTheServer.end()) {
    return Outcome::ServerAway;
  }
  if (code < 500) return Outcome::NotNow;
  constexpr int kTooMuchStorage = 552;
  const auto reason = error.extendedStatusCode();
  const bool isMailboxFull = reason.klass != 0 && reason.subject == 2 && reason.detail == 2;
  return code == kTooMuchStorage && !isMailboxFull ? Outcome::TooLarge : Outcome::Refused;
}

// The output of a program may be long, and may look like lines of a log.
std::string Short(std::string words) {
  constexpr std::size_t kMost = 300;
  words.resize(std::min(words.size(), kMost));
  words.resize(words.find_last_not_of(" \r\n") + 1);
  return OnOneLine(words);
}

constexpr const char* kWithoutAttachment =
    "The attachment was left out, because the mail server does not accept a mail this large.\r\n";

}  // namespace

void SendWithProgram(const MailMessage& message, const SendmailProgram& program, Worker& worker,
                     ToolRunner& tools) {
  std::string bytes;
  worker.Do([&](Patience& /*patience*/) { bytes = Written(message); });
  // Programs of the host end lines with LF.
  bytes.erase(std::remove(bytes.begin(), bytes.end(), '\r'), bytes.end());
  ToolCall call{program.path, {"-t", "-i"}, "C:\\"};
  call.input = std::move(bytes);
  call.patience = kSendmailPatience;
  const auto outcome = tools.Run(call);
  if (const auto* error = std::get_if<RuntimeError>(&outcome)) {
    throw RuntimeError::WithDescription(
        ErrorNumber::AutomationError,
        FromUtf8Roughly("The mail program '" + program.path + "' cannot be used: ") +
            error->Description());
  }
  const auto& result = std::get<ToolResult>(outcome);
  if (result.exitCode == 0) return;
  const auto words = Short(result.errorOutput.empty() ? result.output : result.errorOutput);
  throw RuntimeError::WithDescription(
      ErrorNumber::AutomationError,
      FromUtf8Roughly("The mail program '" + program.path + "' ended with status " +
                      std::to_string(result.exitCode) + (words.empty() ? "" : ": " + words)));
}

WaitingMail Prepared(const MailMessage& message) {
  WaitingMail mail{message.from.address, {}, Written(message)};
  for (const auto& to : message.to) mail.to.push_back(to.address);
  if (message.attachments.empty()) return mail;
  auto smaller = message;
  smaller.attachments.clear();
  smaller.body += kWithoutAttachment;
  mail.smallerText = Written(smaller);
  return mail;
}

Delivery HandOver(const WaitingMail& mail, const std::string& text, const MailServer& server,
                  Worker& worker) {
  using Outcome = Delivery::Outcome;
  auto outcome = Outcome::ServerAway;
  try {
    worker.Do([&](Patience& patience) {
      TalkTo(server, [&] {
        try {
          SendToServer(mail, text, server, patience);
        } catch (const vmime::net::smtp::SMTPMessageSizeExceedsMaxLimitsException&) {
          outcome = Outcome::TooLarge;
          throw;
        } catch (const vmime::net::smtp::SMTPMessageSizeExceedsCurLimitsException&) {
          outcome = Outcome::NotNow;
          throw;
        } catch (const vmime::net::smtp::SMTPCommandError& error) {
          outcome = Meaning(error);
          throw;
        }
      });
    });
    return {};
  } catch (const LoginRefused&) {
    throw;
  } catch (const RuntimeError& error) {
    return {outcome, error.Description()};
  }
}

}  // namespace gorbex
