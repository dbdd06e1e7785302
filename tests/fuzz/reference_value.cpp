#include "core/reference_value.h"

#include "platform/runtime_error.h"
#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

// The fields as far as there are some, with their separators.
std::string Joined(std::string_view value) {
  std::string joined;
  try {
    for (std::size_t number = 0;; ++number) {
      const auto field = ReferenceField(value, number);
      joined.append(number == 0 ? "" : "#").append(field);
    }
  } catch (const RuntimeError& error) {
    Require(error.Code() == ErrorNumber::SubscriptOutOfRange, "a missing field is error 9");
  }
  return joined;
}

bool IsPartOf(std::string_view part, std::string_view whole) {
  return part.empty() ||
         (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

}  // namespace

void ReadInput(std::string_view input) {
  const auto value = input.substr(0, 1024);  // short enough to ask for every field
  Require(Joined(value) == value, "the fields make up the value");
  const auto guid = GetGUID(value);
  Require(IsPartOf(guid, value), "an identity is a part of the value");
  Require(guid.empty() || (guid.front() == '{' && guid.find('}') == guid.size() - 1),
          "an identity stands in braces");
  try {
    Require(IsPartOf(ComponentPath(value), value), "a path is a part of the value");
  } catch (const RuntimeError& error) {
    Require(error.Code() == ErrorNumber::SubscriptOutOfRange, "a missing path is error 9");
  }
}

}  // namespace gorbex::test
