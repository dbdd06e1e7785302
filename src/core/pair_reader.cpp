#include "core/pair_reader.h"

#include <algorithm>

namespace gorbex {

std::optional<Pair> PairReader::Next() {
  const auto equals = rest_.find('=');
  if (equals == std::string_view::npos) return std::nullopt;
  Pair pair{rest_.substr(0, equals), rest_.substr(equals + 1)};
  const auto end = pair.value.find('\r');
  if (end == std::string_view::npos) {
    rest_ = {};
    return pair;
  }
  rest_ = pair.value.substr(std::min(end + 2, pair.value.size()));
  pair.value = pair.value.substr(0, end);
  return pair;
}

}  // namespace gorbex
