#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

/// Takes the next line off the front of a text, its line end (CR LF or LF) cut off.
[[nodiscard]] std::string_view TakeLine(std::string_view& text);

/// The first field of that name in a header: its value on one line, not decoded. Nothing when there
/// is none. A very long value is cut.
[[nodiscard]] std::optional<std::string> FieldOf(std::string_view header, std::string_view name);

/// Where the header of a mail or of a part of it ends: the offset of what follows the empty line.
[[nodiscard]] std::size_t EndOfHeader(std::string_view text);

/// True when the header of a mail, as it came, says that a program sent the mail by itself: a
/// notice of absence, a bounce or a list's mail.
[[nodiscard]] bool IsAutomaticMail(std::string_view header);

}  // namespace gorbex
