#include "platform/linux/mail/transport.h"

#include <algorithm>
#include <vmime/mailboxList.hpp>
#include <vmime/net/transport.hpp>
#include <vmime/security/sasl/defaultSASLAuthenticator.hpp>
#include <vmime/utility/inputStreamStringAdapter.hpp>

#include "platform/linux/mail/character_set.h"
#include "platform/linux/mail/server_session.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr auto kSendmailPatience = 60s;

vmime::mailbox Envelope(const Correspondent& correspondent) {
  return vmime::mailbox(vmime::emailAddress(correspondent.address));
}

void SendToServer(const MailMessage& message, const MailServer& server, Patience& patience) {
  // The protocol ends the text with a line end of its own.
  auto bytes = Written(message);
  if (bytes.ends_with("\r\n")) bytes.resize(bytes.size() - 2);
  vmime::mailboxList recipients;
  for (const auto& to : message.to) {
    recipients.appendMailbox(vmime::make_shared<vmime::mailbox>(Envelope(to)));
  }
  const bool isSecure = server.encryption == Encryption::FromTheStart;
  vmime::shared_ptr<vmime::net::transport> transport;
  AtFirstAddress(server, [&](const std::string& address) {
    transport = vmime::net::session::create()->getTransport(
        vmime::utility::url(isSecure ? "smtps" : "smtp", server.host),
        vmime::make_shared<vmime::security::sasl::defaultSASLAuthenticator>());
    Prepare(*transport, server, address, patience);
    transport->connect();
  });
  vmime::utility::inputStreamStringAdapter in(bytes);
  transport->send(Envelope(message.from), recipients, in, bytes.size());
  try {
    transport->disconnect();
  } catch (const vmime::exception&) {
    // The server has taken the mail; how it takes its leave is its own affair.
  }
}

// What a program says may be long, and may look like lines of a log.
std::string Short(std::string words) {
  constexpr std::size_t kMost = 300;
  words.resize(std::min(words.size(), kMost));
  words.resize(words.find_last_not_of(" \r\n") + 1);
  std::replace_if(
      words.begin(), words.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return words;
}

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
        FromHost("The mail program '" + program.path + "' cannot be used: ") +
            error->Description());
  }
  const auto& result = std::get<ToolResult>(outcome);
  if (result.exitCode == 0) return;
  const auto words = Short(result.errorOutput.empty() ? result.output : result.errorOutput);
  throw RuntimeError::WithDescription(
      ErrorNumber::AutomationError,
      FromHost("The mail program '" + program.path + "' ended with status " +
               std::to_string(result.exitCode) + (words.empty() ? "" : ": " + words)));
}

}  // namespace

void SendMessage(const MailMessage& message, const MailTransport& transport, Worker& worker,
                 ToolRunner& tools) {
  if (const auto* program = std::get_if<SendmailProgram>(&transport)) {
    SendWithProgram(message, *program, worker, tools);
    return;
  }
  const auto& server = std::get<MailServer>(transport);
  worker.Do([&](Patience& patience) {
    TalkTo(server, [&] { SendToServer(message, server, patience); });
  });
}

}  // namespace gorbex
