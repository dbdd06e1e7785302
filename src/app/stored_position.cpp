#include "app/stored_position.h"

#include <array>
#include <charconv>

#include "core/text.h"

namespace gorbex {
namespace {

std::string SingleText(float value) {
  std::array<char, 64> digits{};
  const auto end =
      std::to_chars(digits.data(), digits.data() + digits.size(), value, std::chars_format::fixed);
  return {digits.data(), end.ptr};
}

}  // namespace

WindowPosition PositionFrom(std::string_view stored) {
  const auto fields = Split(stored, ',');
  const auto number = [&](std::size_t index) {
    return static_cast<float>(NumericValue(Field(fields, index)));
  };
  return {number(0), number(1), number(2), number(3)};
}

std::string PositionText(const WindowPosition& position) {
  return SingleText(position.left) + "," + SingleText(position.top) + "," +
         SingleText(position.width) + "," + SingleText(position.height);
}

}  // namespace gorbex
