#include "freshness/record_number.h"

#include <array>

namespace gorbex {
namespace {

constexpr unsigned kBits = 6;
constexpr std::uint64_t kMask = 63;
constexpr std::string_view kDigits =
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz-_";
constexpr std::int8_t kNoDigit = -1;

constexpr std::array<std::int8_t, 256> kValues = [] {
  std::array<std::int8_t, 256> values{};
  for (auto& value : values) value = kNoDigit;
  for (std::size_t i = 0; i < kDigits.size(); ++i) {
    values[static_cast<unsigned char>(kDigits[i])] = static_cast<std::int8_t>(i);
  }
  return values;
}();

}  // namespace

std::string FullNumber(std::uint64_t number) {
  std::string digits(kFullDigits, kDigits[0]);
  for (auto digit = digits.rbegin(); number > 0; ++digit, number >>= kBits) {
    *digit = kDigits[number & kMask];
  }
  return digits;
}

std::string ShortNumber(std::uint64_t number) {
  const std::string digits = FullNumber(number);
  const auto first = digits.find_first_not_of(kDigits[0]);
  return first == std::string::npos ? digits.substr(kFullDigits - 1) : digits.substr(first);
}

std::optional<std::uint64_t> NumberIn(std::string_view digits) {
  if (digits.empty() || digits.size() > kFullDigits) return std::nullopt;
  std::uint64_t number = 0;
  for (const char digit : digits) {
    const auto value = kValues[static_cast<unsigned char>(digit)];
    if (value == kNoDigit) return std::nullopt;
    number = number << kBits | static_cast<std::uint64_t>(value);
  }
  return number;
}

}  // namespace gorbex
