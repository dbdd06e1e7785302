#include "core/appearance.h"

#include <array>

namespace gorbex {

std::string_view ImageKey(Image image) {
  constexpr std::array<std::string_view, 15> kKeys = {
      "",        "vbgroup",        "vbproject",        "vbreference", "vbform",         "vbclass",
      "notepad", "checkreference", "invalidreference", "dependancy",  "projectwarning", "building",
      "buildok", "builderror",     "uptodate"};
  return kKeys[static_cast<std::size_t>(image)];
}

}  // namespace gorbex
