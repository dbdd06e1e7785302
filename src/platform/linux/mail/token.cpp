#include "platform/linux/mail/token.h"

#include <string_view>
#include <variant>

#include "platform/command_line.h"
#include "platform/header_fields.h"

namespace gorbex {
namespace {

using namespace std::chrono_literals;

constexpr auto kPatience = 60s;

[[noreturn]] void Fail(const std::string& why) {
  throw MailboxAway("The command for the mail server's token (MailTokenCommand) " + why);
}

}  // namespace

void MailToken::Use(const std::string& command) {
  command_ = command;
  token_.reset();
}

MailServer MailToken::Ready(const MailServer& server) {
  auto ready = server;
  if (!server.wantsToken) return ready;
  if (!token_) token_ = Asked();
  ready.password = *token_;
  return ready;
}

// Its output is a secret and is never shown, not even when it failed.
std::string MailToken::Asked() const {
  auto words = SplitArguments(command_);
  if (words.empty()) Fail("is not set");
  ToolCall call{words.front(), {words.begin() + 1, words.end()}, "C:\\"};
  call.patience = kPatience;
  const auto outcome = tools_.Run(call);
  if (const auto* error = std::get_if<RuntimeError>(&outcome)) {
    Fail("cannot be run: " + error->Description());
  }
  const auto& result = std::get<ToolResult>(outcome);
  if (result.exitCode != 0) Fail("ended with status " + std::to_string(result.exitCode));
  std::string_view printed = result.output;
  std::string token(TakeLine(printed));
  if (token.empty()) Fail("printed nothing");
  return token;
}

}  // namespace gorbex
