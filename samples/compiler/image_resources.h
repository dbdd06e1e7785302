#pragma once

#include <string>
#include <string_view>

namespace gorbex::standin {

/// The image of a program or library (PE32 or PE32+) with a type library as its only resource.
/// RuntimeError when it has resources already, or no room for a section more.
[[nodiscard]] std::string WithTypeLibrary(std::string image, std::string_view library);

}  // namespace gorbex::standin
