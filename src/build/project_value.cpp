#include "build/project_value.h"

#include <algorithm>

#include "core/text.h"

namespace gorbex {

std::optional<ValuePlace> FindProjectValue(std::string_view text, std::string_view key) {
  const std::string wanted = std::string(key) + "=";
  const auto found = FindIgnoringCase(text, wanted);
  if (found == std::string_view::npos) return std::nullopt;
  const std::size_t start = found + wanted.size();
  const auto end = text.find_first_of(kLineBreak, start);
  return ValuePlace{start, std::min(end, text.size()) - start, end != std::string_view::npos};
}

std::string ProjectValue::ReadProjectValue(const std::string& path, std::string_view key) {
  std::string text;
  try {
    text = files_.Read(path);
  } catch (const RuntimeError& error) {
    failed.Emit(path, error);
    return {};
  }
  const auto place = FindProjectValue(text, key);
  if (!place) return text;
  // A value on a last line without a line end has always been read together with its "=".
  if (!place->hasLineEnd) return text.substr(place->start - 1);
  return text.substr(place->start, place->size);
}

bool ProjectValue::WriteProjectValue(const std::string& path, std::string_view key,
                                     std::string_view value) {
  try {
    std::string text = files_.Read(path);
    if (const auto place = FindProjectValue(text, key)) {
      text.replace(place->start, place->size, value);
    }
    files_.Write(path, text.append(kLineBreak));
  } catch (const RuntimeError& error) {
    failed.Emit(path, error);
  }
  return false;
}

}  // namespace gorbex
