#include "platform/mail_address.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

namespace gorbex {
namespace {

bool EndsLocalPart(char letter) {
  return letter <= ' ' || letter >= 0x7F ||
         std::string_view("()<>,;:\\\"[]?").find(letter) != std::string_view::npos;
}

bool IsOfDomain(char letter) {
  return letter == '.' || letter == '-' || letter == '_' ||
         (static_cast<unsigned char>(letter) < 0x80 && std::isalnum(letter) != 0);
}

}  // namespace

// Mail libraries write longer ones, other domains and names with a "?" in an encoding that makes
// them somebody else's.
bool IsMailAddress(const std::string& text) {
  constexpr std::size_t kLongestLocalPart = 64;
  constexpr std::size_t kLongest = 254;
  const auto at = text.find('@');
  if (at == 0 || at > kLongestLocalPart || at + 1 == text.size() || text.size() > kLongest ||
      text.front() == '-') {
    return false;
  }
  const auto domain = text.begin() + static_cast<std::ptrdiff_t>(at) + 1;
  return std::none_of(text.begin(), domain - 1, EndsLocalPart) &&
         std::all_of(domain, text.end(), IsOfDomain);
}

bool NamesMailAddress(const std::string& text) {
  const auto start = text.rfind('<');
  if (text.find_first_of("\r\n") != std::string::npos) return false;
  if (start == std::string::npos) return IsMailAddress(text);
  return text.ends_with('>') && IsMailAddress(text.substr(start + 1, text.size() - start - 2));
}

}  // namespace gorbex
