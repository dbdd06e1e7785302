#pragma once

#include "platform/code_page.h"

namespace gorbex {

/// The system's code page of this number. Error 5 when the system has none, or when its characters
/// have several bytes.
[[nodiscard]] CodePage CodePageNumbered(unsigned number);

/// The system's code page for programs without Unicode. Errors as CodePageNumbered.
[[nodiscard]] CodePage SystemCodePage();

}  // namespace gorbex
