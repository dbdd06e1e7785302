#include "platform/linux/mail/body_text.h"

#include <algorithm>

#include "platform/linux/mail/mail_header.h"
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

}  // namespace

// A mail as it came.
void ReadInput(std::string_view input) {
  const auto header = ReadMailHeader(input);
  for (const auto& text : {header.subject, header.senderName, header.senderAddress,
                           header.replyAddress, header.messageId, header.references}) {
    Require(IsOneLine(text), "what a header says stands on one line");
  }
  Require(header.replyAddress.empty() || input.find('@') != std::string_view::npos,
          "an address is not made up");
  RequireWholeLineEnds(BodyText(input));
}

}  // namespace gorbex::test
