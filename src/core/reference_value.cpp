#include "core/reference_value.h"

#include "core/text.h"
#include "platform/runtime_error.h"

namespace gorbex {

std::string_view GetGUID(std::string_view text) {
  const auto open = text.find('{');
  if (open == std::string_view::npos) return {};
  const auto close = text.find('}', open);
  if (close == std::string_view::npos) return {};
  return text.substr(open, close - open + 1);
}

std::string_view ReferenceField(std::string_view value, std::size_t number) {
  if (value.empty()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  for (; number > 0; --number) {
    const auto separator = value.find('#');
    if (separator == std::string_view::npos) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
    value.remove_prefix(separator + 1);
  }
  return value.substr(0, value.find('#'));
}

bool IsTypeLibraryReference(std::string_view value) {
  return value.starts_with("*\\");
}

std::string_view ComponentPath(std::string_view value) {
  if (IsTypeLibraryReference(value)) return ReferenceField(value, 3);
  const auto field = ReferenceField(value, 2);
  const auto separator = field.find(';');
  if (separator == std::string_view::npos) return {};
  return TrimBlanks(field.substr(separator + 1));
}

}  // namespace gorbex
