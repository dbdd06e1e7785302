#pragma once

#include <optional>
#include <string_view>

namespace gorbex {

struct Pair {
  std::string_view key;
  std::string_view value;
};

/// Takes a text apart into key=value pairs in one pass. The key is everything up to the next "=",
/// so a line without "=" becomes the beginning of the next key; the value runs to the next
/// carriage return, or to the end of the text. The text must outlive the pairs.
class PairReader {
 public:
  explicit PairReader(std::string_view text) : rest_(text) {}

  /// Nothing when no "=" is left.
  [[nodiscard]] std::optional<Pair> Next();

 private:
  std::string_view rest_;
};

}  // namespace gorbex
