#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace gorbex {

enum class TypeKind { Enum, Record, Module, Interface, Dispatch, Coclass, Alias, Union };

/// Bits of TypeInfo::flags.
namespace type_flag {
inline constexpr std::uint32_t kCanCreate = 0x2;
inline constexpr std::uint32_t kHidden = 0x10;
inline constexpr std::uint32_t kControl = 0x20;
inline constexpr std::uint32_t kDual = 0x40;
inline constexpr std::uint32_t kOleAutomation = 0x100;
}  // namespace type_flag

struct TypeInfo {
  TypeKind kind = TypeKind::Enum;
  std::string guid;  ///< in upper case with braces; empty when it has none or a null one
  std::string name;  ///< in the library's code page
  std::uint32_t flags = 0;
  /// Of a coclass: the type of this library (an index) that is its default interface.
  std::optional<std::size_t> defaultInterface;
};

/// The contents of a type library: itself and its types, in the order of the file.
struct TypeLibrary {
  std::string guid;
  std::uint16_t major = 0;
  std::uint16_t minor = 0;
  std::uint32_t lcid = 0;
  std::uint16_t flags = 0;
  std::string name;
  std::string helpString;
  std::vector<TypeInfo> types;
};

/// The version of a library as the registry writes it: hexadecimal.
[[nodiscard]] std::string RegistryVersionOf(const TypeLibrary& library);

/// Reads the bytes of a type library in the MSFT format; nothing when they are something else or
/// damaged.
[[nodiscard]] std::optional<TypeLibrary> ReadTypeLibrary(std::string_view bytes);

}  // namespace gorbex
