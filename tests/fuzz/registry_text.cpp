#include "platform/linux/registry_text.h"

#include <algorithm>

#include "tests/fuzz/target.h"

namespace gorbex::test {

void ReadInput(std::string_view input) {
  RegistryKey top;
  const auto lines = static_cast<std::size_t>(std::count(input.begin(), input.end(), '\n')) + 1;
  Require(ReadRegistryText(input, top) <= lines, "only lines can make no sense");
  const std::string written = WriteRegistryText(top);
  RegistryKey again;
  Require(ReadRegistryText(written, again) == 0, "what was written makes sense");
  Require(WriteRegistryText(again) == written, "what was written is read as it was");
}

}  // namespace gorbex::test
