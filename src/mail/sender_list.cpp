#include "mail/sender_list.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"

namespace gorbex {

SenderList::SenderList(std::string_view text) : isOpen_(text.empty()) {
  for (const auto field : Split(text, ',')) {
    const std::string_view entry = TrimBlanks(field);
    if (!entry.empty()) entries_.emplace_back(entry.substr(entry.starts_with('@') ? 1 : 0));
  }
}

bool SenderList::IsClear() const {
  const auto isClear = [](const std::string& entry) {
    return entry.find_first_of(" <>*;\"\t\r\n") == std::string::npos &&
           std::count(entry.begin(), entry.end(), '@') < 2;
  };
  return !entries_.empty() && std::all_of(entries_.begin(), entries_.end(), isClear);
}

bool SenderList::Allows(std::string_view address) const {
  if (isOpen_) return true;
  const auto at = address.rfind('@');
  if (at == std::string_view::npos) return false;
  const std::string_view domain = address.substr(at + 1);
  return std::any_of(entries_.begin(), entries_.end(), [&](const std::string& entry) {
    return EqualsIgnoringCase(entry, entry.find('@') == std::string::npos ? domain : address);
  });
}

}  // namespace gorbex
