#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace gorbex::standin {

using Uuid = std::array<std::uint8_t, 16>;  ///< in the order it is written

/// Gives identities that nothing had before.
class NewIdentities {
 public:
  /// With a seed they depend only on it and on the arguments, so that a build can be
  /// repeated; without one they are random.
  explicit NewIdentities(std::string seed = {}) : seed_(std::move(seed)) {}

  /// In braces, for something whose old identities the text tells; empty when it had none.
  [[nodiscard]] std::string Next(std::string_view name, std::string_view old) const;

 private:
  std::string seed_;
};

/// Nothing when the text is none in braces; letter case is ignored.
[[nodiscard]] std::optional<Uuid> ParsedUuid(std::string_view text);

/// The identity of something that was never built before ("Project" names its library), so that a
/// fresh checkout of several projects gets the identities which their references name. Letter case
/// is ignored.
[[nodiscard]] std::string FirstIdentity(std::string_view name);

}  // namespace gorbex::standin
