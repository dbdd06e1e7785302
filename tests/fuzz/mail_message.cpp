#include "platform/linux/mail/body_text.h"

#include <algorithm>

#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/linux/mail/mail_header.h"
#include "platform/linux/mail/mail_message.h"
#include "platform/mail_address.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

bool IsOneLine(std::string_view text) {
  return std::none_of(text.begin(), text.end(),
                      [](char letter) { return static_cast<unsigned char>(letter) < 0x20; });
}

void RequireWholeLineEnds(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r') Require(text.substr(i + 1).starts_with('\n'), "lines end with CR LF");
    if (text[i] == '\n') Require(i > 0 && text[i - 1] == '\r', "lines end with CR LF");
  }
}

// What the mail says of itself adds neither a field nor a reader to its answer.
void RequireSoundReply(const MailHeader& header) {
  constexpr std::string_view kFields =
      "|from|to|subject|date|message-id|references|in-reply-to|mime-version|auto-submitted|"
      "content-type|content-transfer-encoding|";
  const auto written = Written({.from = {"", "builder@host.example"},
                                .to = {{"", header.replyAddress}},
                                .subject = header.subject,
                                .answered = header.messageId,
                                .references = header.references});
  std::string_view rest(written);
  rest = rest.substr(0, EndOfHeader(rest));
  auto to = FieldOf(rest, "To").value_or("");
  std::erase(to, ' ');  // a long address is on a separate line
  Require(to == header.replyAddress, "the answer goes to who wants it");
  while (!rest.empty()) {
    const auto line = TakeLine(rest);
    Require(line.size() < 1000, "lines are as short as mail servers want them");
    if (line.empty() || line.front() == ' ' || line.front() == '\t') continue;
    const auto name = line.substr(0, line.find(':'));
    Require(kFields.find("|" + LowerCase(name) + "|") != std::string_view::npos,
            "the answer has its own fields alone");
  }
}

}  // namespace

// A mail as it came.
void ReadInput(std::string_view input) {
  const auto header = ReadMailHeader(input);
  for (const auto& text : {header.subject, header.senderName, header.senderAddress,
                           header.replyAddress, header.messageId, header.references}) {
    Require(IsOneLine(text), "what a header says stands on one line");
  }
  for (const auto& address : {header.senderAddress, header.replyAddress}) {
    Require(address.empty() || IsMailAddress(address), "an address is one");
    Require(input.find(address) != std::string_view::npos, "an address is not made up");
  }
  if (!header.replyAddress.empty()) RequireSoundReply(header);
  RequireWholeLineEnds(BodyText(input));
}

}  // namespace gorbex::test
