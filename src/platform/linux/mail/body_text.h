#pragma once

#include <string>
#include <string_view>

namespace gorbex {

/// The text of a whole mail as its reader sees it, in the code page with CR LF between lines: the
/// plain text where there is one, else that of the first HTML part. Attachments are left out. Very
/// long texts are cut, and parts hidden deep inside others are not looked for.
[[nodiscard]] std::string BodyText(std::string_view mail);

}  // namespace gorbex
