#include "platform/windows/typed_path.h"

#include "platform/code_page.h"
#include "platform/runtime_error.h"
#include "platform/windows/full_path.h"
#include "platform/windows/wide_text.h"

namespace gorbex {

std::string ProgramPathOf(const std::string& typed) {
  const auto text = FromUtf8(typed);
  const auto full = text ? FullPathOf(*text) : std::nullopt;
  const auto path = full ? FromWide(*full) : std::nullopt;
  if (!path) throw RuntimeError(ErrorNumber::BadFileName);
  return *path;
}

}  // namespace gorbex
