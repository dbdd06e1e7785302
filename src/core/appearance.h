#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace gorbex {

/// The icons of tree nodes and list rows.
enum class Image : std::uint8_t {
  None,
  VbGroup,
  VbProject,
  VbReference,
  VbForm,
  VbClass,
  Notepad,
  CheckReference,
  InvalidReference,
  Dependancy,
  ProjectWarning,
  Building,
  BuildOk,
  BuildError,
  UpToDate,
};

/// The key under which front ends and reports know an icon, such as "vbproject".
[[nodiscard]] constexpr std::string_view ImageKey(Image image) {
  constexpr std::string_view kKeys[] = {
      "",        "vbgroup",        "vbproject",        "vbreference", "vbform",         "vbclass",
      "notepad", "checkreference", "invalidreference", "dependancy",  "projectwarning", "building",
      "buildok", "builderror",     "uptodate"};
  return kKeys[static_cast<std::size_t>(image)];
}

/// System colours by their system value.
enum class Colour : std::uint32_t { WindowText = 0x80000008, ButtonShadow = 0x80000010 };

}  // namespace gorbex
