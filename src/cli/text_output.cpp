#include "cli/text_output.h"

#include <algorithm>
#include <cstdio>

#include "core/file_tools.h"
#include "core/text.h"

namespace gorbex::cli {

std::string Indented(std::string_view text) {
  std::string lines;
  for (const auto line : Split(text, '\n')) {
    const std::string shown = Plain(line);
    if (!shown.empty()) lines += "      " + shown + "\n";
  }
  return lines;
}

std::string Seconds(std::chrono::milliseconds duration) {
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.2f s", static_cast<double>(duration.count()) / 1000);
  return buffer;
}

std::size_t Width(std::string_view utf8) {
  return static_cast<std::size_t>(std::count_if(utf8.begin(), utf8.end(), [](char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;
  }));
}

std::string Padded(std::string utf8, std::size_t width) {
  const auto characters = Width(utf8);
  if (characters < width) utf8.append(width - characters, ' ');
  return utf8;
}

std::string FileName(std::string_view path) {
  return Plain(GetFileFromPath(path));
}

}  // namespace gorbex::cli
