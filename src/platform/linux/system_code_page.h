#pragma once

#include <filesystem>

#include "platform/code_page.h"

namespace gorbex {

/// As the C library knows it. Error 5 when it has characters of several bytes, or is not known.
[[nodiscard]] CodePage CodePageNumbered(unsigned number);

/// The code page that the registry of a prefix names (the value ACP of Nls\\CodePage); Windows-1252
/// when it names none. Errors as CodePageNumbered.
[[nodiscard]] CodePage SystemCodePage(const std::filesystem::path& prefixRoot);

}  // namespace gorbex
