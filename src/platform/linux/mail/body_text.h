#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// The text of a whole mail as its reader sees it, in the code page with CR LF between lines: the
/// first part with a visible text, and of alternatives the HTML one. Lines that were only wrapped
/// for sending are joined again, and no-break spaces become blanks. Attachments are left out. Very
/// long texts are cut, and parts hidden deep inside others are not looked for.
[[nodiscard]] std::string BodyText(std::string_view mail);

}  // namespace gorbex
