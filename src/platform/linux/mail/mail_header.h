#pragma once

#include <array>
#include <string>
#include <string_view>

namespace gorbex {

/// The parts of a mail that the program needs without its body.
struct MailHeader {
  std::string subject;        ///< code page, on one line
  std::string senderName;     ///< code page; the address where there is no name
  std::string senderAddress;  ///< empty where the mail names none
  std::string replyAddress;   ///< where the sender wants answers; empty as above
  std::string messageId;      ///< as it is, with its angle brackets
  std::string references;     ///< the same, of the mails before it
  bool isAutomatic = false;
};

/// The fields that ReadMailHeader looks at; all others may be left out.
inline constexpr std::array<const char*, 10> kMailHeaderFields = {
    "Subject",    "From",           "Sender",     "Reply-To",    "Message-ID",
    "References", "Auto-Submitted", "Precedence", "Return-Path", "List-Id"};

/// Reads a header as it came, up to the first empty line. A damaged one gives what can be read.
[[nodiscard]] MailHeader ReadMailHeader(std::string_view header);

}  // namespace gorbex
