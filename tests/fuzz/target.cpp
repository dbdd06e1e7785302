#include "tests/fuzz/target.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <iostream>

namespace gorbex::test {

void Require(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "DOES NOT HOLD: " << what << std::endl;
  std::abort();
}

std::string TakeFirstLine(std::string_view& input) {
  const auto end = std::min(input.find('\n'), input.size());
  std::string line(input.substr(0, end));
  input.remove_prefix(std::min(end + 1, input.size()));
  return line;
}

}  // namespace gorbex::test

// The name and the form are the fuzzing library's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The input is a block of its own, so that a look past its end is seen.
  gorbex::test::ReadInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
