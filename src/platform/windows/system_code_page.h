#pragma once

#include "platform/code_page.h"

namespace gorbex {

/// As the system knows it. Error 5 when it has characters of several bytes, or is not known.
[[nodiscard]] CodePage CodePageNumbered(unsigned number);

/// The system's code page for programs without Unicode. Errors as CodePageNumbered.
[[nodiscard]] CodePage SystemCodePage();

}  // namespace gorbex
