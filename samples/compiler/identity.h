#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex::standin {

using Uuid = std::array<std::uint8_t, 16>;  ///< in the order it is written

/// A version 5 UUID: the same for the same name, everywhere.
[[nodiscard]] Uuid NameBasedUuid(const Uuid& space, std::string_view name);

[[nodiscard]] Uuid RandomUuid();

/// In braces and capital letters, as the registry writes it.
[[nodiscard]] std::string BracedText(const Uuid& uuid);
/// Nothing when the text is none in braces; letter case is ignored.
[[nodiscard]] std::optional<Uuid> ParsedUuid(std::string_view text);

/// The identity of something that was never built before ("Project" names its library), so that a
/// fresh checkout of several projects gets the identities which their references name. Letter case
/// is ignored.
[[nodiscard]] std::string FirstIdentity(std::string_view name);

}  // namespace gorbex::standin
