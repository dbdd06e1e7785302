#pragma once

#include <string_view>

namespace gorbex::ui {

/// The bytes of a file built into the program, by its name without folder and extension; empty for
/// an unknown name. They live as long as the program, and a zero byte follows them.
[[nodiscard]] std::string_view EmbeddedFile(std::string_view name);

}  // namespace gorbex::ui
