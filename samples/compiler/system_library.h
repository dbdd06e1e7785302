#pragma once

#include <string_view>

#include "platform/component/type_library.h"

namespace gorbex::standin {

inline constexpr std::string_view kSystemLibrary = "{00020430-0000-0000-C000-000000000046}";
inline constexpr std::string_view kUnknownInterface = "{00000000-0000-0000-C000-000000000046}";
inline constexpr std::string_view kDispatchInterface = "{00020400-0000-0000-C000-000000000046}";

/// The library of the base interfaces (stdole2.tlb), for machines that have none.
[[nodiscard]] TypeLibrary SystemLibrary();

}  // namespace gorbex::standin
