#pragma once

#include <string_view>

namespace gorbex {

/// True when the header of a mail, as it came, says that a program sent the mail by itself: a
/// notice of absence, a bounce or a list's mail.
[[nodiscard]] bool IsAutomaticMail(std::string_view header);

}  // namespace gorbex
