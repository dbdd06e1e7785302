#pragma once

#include <string>

#include "platform/component/type_library.h"

namespace gorbex::standin {

/// The bytes of a 32-bit type library in the MSFT format: interfaces, dual interfaces (derived from
/// the IDispatch of stdole2.tlb) and classes, none with members. The names of the library and its
/// types must differ. RuntimeError for what the format cannot hold.
[[nodiscard]] std::string TypeLibraryImage(const TypeLibrary& library);

}  // namespace gorbex::standin
