#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/procedure.h"
#include "platform/registry.h"

namespace gorbex {

/// Where the program keeps its settings and window state.
inline constexpr std::string_view kProgramKey =
    "HKEY_CURRENT_USER\\Software\\Tovarren\\GorbexBuilder";

/// The program's only way to the registry. Key paths begin with the name of a root key. A type is
/// "STRING" (also when empty), "BOOL", "NUMBER", "LONG" or "BINARY" in any letter case.
class RegistryTools {
 public:
  RegistryTools(Registry& registry, ErrorReport& report) : registry_(registry), report_(report) {}

  /// The value as text; "False" for a missing "BOOL", else empty when missing.
  [[nodiscard]] std::string fnsGetRegistryValue(std::string_view keyPath, std::string_view name,
                                                std::string_view type = {}) const;

  /// Why a text is not stored: a later reading could not give it back. Nothing when it could.
  [[nodiscard]] static std::optional<std::string> LengthProblem(std::string_view text);

  /// Writes a value, making its key; does nothing when the root is unknown or the system refuses. A
  /// text that is too long is error 5, and nothing is written.
  void subSetRegistryValue(std::string_view keyPath, std::string_view name, std::string_view value,
                           std::string_view type = {});

  /// The handle of the path's root key; 0 when the name is unknown or no "\" follows it.
  [[nodiscard]] std::uint32_t fnlHKEYValue(std::string_view keyPath) const;

  [[nodiscard]] bool KeyExists(std::string_view keyPath) const;

 private:
  Registry& registry_;
  ErrorReport& report_;
};

}  // namespace gorbex
