#pragma once

#include <string>
#include <string_view>

namespace gorbex::mail_setting {

// Values of the program's registry key that say how requests arrive and whose are served. All are
// optional; the first four mean nothing to a mail system that has its own account.

inline constexpr std::string_view kStore = "MailStore";                ///< URL of the mail store
inline constexpr std::string_view kTransport = "MailTransport";        ///< URL of the transport
inline constexpr std::string_view kFrom = "MailFrom";                  ///< the sender of replies
inline constexpr std::string_view kTokenCommand = "MailTokenCommand";  ///< prints a token
inline constexpr std::string_view kAllowedSenders = "AllowedSenders";

/// The problem with a value of one of them, to be read after its name; empty when there is none.
[[nodiscard]] std::string ProblemWith(std::string_view name, const std::string& value);

}  // namespace gorbex::mail_setting
