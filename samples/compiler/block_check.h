#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "compiler/source_text.h"

namespace gorbex::standin {

struct CodeFault {
  std::size_t line = 0;
  std::string text;
};

/// The first place where procedures, loops, conditions and types do not nest properly, where it
/// shows: a block without its end at the line that finds it open.
[[nodiscard]] std::optional<CodeFault> CheckBlocks(const std::vector<CodeLine>& code);

}  // namespace gorbex::standin
