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

std::string RootOf(std::string_view path) {
  const bool isShare = path.starts_with("\\\\");
  auto end = path.find('\\', isShare ? 2 : 0);
  if (isShare && end != std::string_view::npos) end = path.find('\\', end + 1);
  return std::string(path.substr(0, end));
}

std::string Climbing(std::string_view path, std::string_view name) {
  std::string climbing(path);
  if (climbing.ends_with('\\')) climbing.pop_back();
  for (auto left = std::count(path.begin(), path.end(), '\\') + 2; left > 0; --left) {
    climbing += "\\..";
  }
  return climbing.append("\\").append(name);
}

}  // namespace gorbex::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // The input is a separate block, so that a look past its end is seen.
  gorbex::test::ReadInput({reinterpret_cast<const char*>(data), size});
  return 0;
}
