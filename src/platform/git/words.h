#pragma once

#include <string>

#include "platform/tool.h"

namespace gorbex {

/// Git's words when it failed: its error output without advice, else its output. No password is
/// in it, neither the one given nor one in a URL.
[[nodiscard]] std::string WordsOf(const ToolResult& failure, const std::string& password);

/// Throws the error of source control with these words.
[[noreturn]] void Refuse(const std::string& why);

}  // namespace gorbex
