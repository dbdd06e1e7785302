#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "compiler/component_identity.h"
#include "compiler/type_library_image.h"

namespace gorbex::standin {

/// True for the name of an enumeration that the project knows.
using IsEnum = std::function<bool(std::string_view name)>;

/// The members of the library that ComponentLibrary() makes of the classes, in the order of its
/// types. Every type that is neither the language's own nor an enumeration is an object's.
[[nodiscard]] std::vector<LibraryMembers> MembersOf(const std::vector<OfferedClass>& classes,
                                                    const TypeLibrary& library,
                                                    const IsEnum& isEnum);

}  // namespace gorbex::standin
