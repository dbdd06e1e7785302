#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// The senders that may ask for builds: addresses ("jane@example.com") and whole domains
/// ("example.com"), separated by commas. Empty allows everyone; a list without a valid entry allows
/// no one.
class SenderList {
 public:
  explicit SenderList(std::string_view text);

  /// Whether every entry is an address or a domain, and there is one.
  [[nodiscard]] bool IsClear() const;

  /// Whether a sender may ask. A sender without a known address is never on a list.
  [[nodiscard]] bool Allows(std::string_view address) const;

 private:
  bool isOpen_;
  std::vector<std::string> entries_;
};

}  // namespace gorbex
