#include "core/reference_value.h"

#include <algorithm>

#include "core/text.h"
#include "platform/code_page.h"
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

std::optional<std::string_view> ProjectFileOf(std::string_view value) {
  if (!EqualsIgnoringCase(value.substr(0, 3), "*\\A")) return std::nullopt;
  return value.substr(3, value.find('#') - 3);
}

std::string_view ComponentPath(std::string_view value) {
  if (IsTypeLibraryReference(value)) return ReferenceField(value, 3);
  const auto field = ReferenceField(value, 2);
  const auto separator = field.find(';');
  if (separator == std::string_view::npos) return {};
  return TrimBlanks(field.substr(separator + 1));
}

std::string_view ReferenceTitle(std::string_view value) {
  constexpr std::ptrdiff_t kSeparators = 4;  // of a type library's whole line
  // A control's file is after the last ";"; a reference to a project has nothing but its path.
  std::string_view path = value.substr(value.find_last_of("#;") + 1);
  if (std::count(value.begin(), value.end(), '#') >= kSeparators) {
    const auto description = TrimBlanks(ReferenceField(value, 4));
    if (!description.empty()) return description;
    path = ReferenceField(value, 3);
  }
  return TrimBlanks(path.substr(path.find_last_of('\\') + 1));
}

}  // namespace gorbex
