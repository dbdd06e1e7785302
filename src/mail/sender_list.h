#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

/// Who may ask for builds: addresses ("jane@example.com") and whole domains ("example.com"),
/// separated by commas. An empty list lets everyone.
class SenderList {
 public:
  explicit SenderList(std::string_view text);

  /// Whether the list lets a sender ask; one whose address is not known never is on a list.
  [[nodiscard]] bool Allows(std::string_view address) const;

 private:
  std::vector<std::string> entries_;
};

}  // namespace gorbex
