#include "build/project_value.h"

#include "core/text.h"

namespace gorbex {

std::optional<ValuePlace> FindProjectValue(std::string_view text, std::string_view key) {
  const std::string wanted = std::string(key) + "=";
  const auto found = FindIgnoringCase(text, wanted);
  if (found == std::string_view::npos) return std::nullopt;
  ValuePlace place{found + wanted.size()};
  const auto end = text.find_first_of(kLineBreak, place.start);
  if (end != std::string_view::npos) place.end = end;
  return place;
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
  if (!place->end) return text.substr(place->start - 1);
  return text.substr(place->start, *place->end - place->start);
}

bool ProjectValue::WriteProjectValue(const std::string& path, std::string_view key,
                                     std::string_view value) {
  try {
    std::string text = files_.Read(path);
    if (const auto place = FindProjectValue(text, key)) {
      text.replace(place->start, place->end.value_or(text.size()) - place->start, value);
    }
    files_.Write(path, text.append(kLineBreak));
  } catch (const RuntimeError& error) {
    failed.Emit(path, error);
  }
  return false;
}

}  // namespace gorbex
