#pragma once

#include <string>

#include "platform/component/type_library.h"

namespace gorbex {

/// The GUID of an interface that the library defines: the default one of the first class that has
/// such, else the first in the file. Empty when it defines none.
[[nodiscard]] std::string OwnInterfaceOf(const TypeLibrary& library);

}  // namespace gorbex
