#include "core/text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr std::size_t kShortPattern = 64;

bool StandsAt(std::string_view text, std::size_t at, std::string_view lowered) {
  return at + lowered.size() <= text.size() &&
         std::equal(lowered.begin(), lowered.end(), text.begin() + static_cast<std::ptrdiff_t>(at),
                    [](char wanted, char letter) { return LowerCase(letter) == wanted; });
}

std::size_t FindShort(std::string_view text, std::string_view lowered, std::size_t from) {
  // A first character without letter case, such as a GUID's brace, is found by the library's fast
  // search.
  const std::string first = {lowered.front(), UpperCase(lowered.substr(0, 1)).front()};
  const bool caseless = first[0] == first[1];
  const auto next = [&](std::size_t at) {
    return caseless ? text.find(first[0], at) : text.find_first_of(first, at);
  };
  for (auto at = next(from); at != std::string_view::npos; at = next(at + 1)) {
    if (StandsAt(text, at, lowered)) return at;
  }
  return std::string_view::npos;
}

// Long patterns come from damaged or hostile files. The library's search compares many characters
// at once, so that even then the worst case takes seconds only.
std::size_t FindLong(std::string_view text, std::string_view lowered, std::size_t from) {
  const auto found = LowerCase(text.substr(from)).find(lowered);
  return found == std::string::npos ? found : from + found;
}

// Collects the characters of a decimal number, skipping blanks between them.
class NumberReader {
 public:
  explicit NumberReader(std::string_view text) : text_(text) {}

  std::string Decimal() {
    TakeOneOf("+-");
    TakeDigits();
    if (TakeOneOf(".")) TakeDigits();
    TakeExponent();
    return digits_;
  }

  char Peek() {
    while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\t' || text_[at_] == '\n')) {
      ++at_;
    }
    return at_ < text_.size() ? text_[at_] : '\0';
  }

  void Skip() { ++at_; }

 private:
  bool TakeOneOf(std::string_view wanted) {
    const char letter = Peek();
    if (letter == '\0' || wanted.find(letter) == std::string_view::npos) return false;
    if (letter != '+') digits_ += letter;
    Skip();
    return true;
  }

  void TakeDigits() {
    while (IsDigit(Peek())) {
      digits_ += Peek();
      Skip();
    }
  }

  void TakeExponent() {
    const char letter = LowerCase(Peek());
    if ((letter != 'e' && letter != 'd') ||
        digits_.find_first_of("0123456789") == std::string::npos) {
      return;
    }
    const std::string mantissa = digits_;
    Skip();
    digits_ += 'e';
    TakeOneOf("+-");
    if (IsDigit(Peek())) {
      TakeDigits();
    } else {
      digits_ = mantissa;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::string digits_;
};

std::optional<double> ParseDecimal(const std::string& digits) {
  double value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error == std::errc::result_out_of_range) {
    const auto exponent = digits.find("e-");
    if (exponent != std::string::npos) return 0.0;
    throw RuntimeError(ErrorNumber::Overflow);
  }
  if (error != std::errc{}) return std::nullopt;
  return value;
}

// "&HFF" and "&O17": up to 16 bits they are read as a signed 16-bit number, as the language does.
double NumberInBase(NumberReader& number) {
  number.Skip();
  const char base = LowerCase(number.Peek());
  if (base != 'h' && base != 'o') return 0;
  number.Skip();
  std::string digits;
  const std::string_view allowed = base == 'h' ? "0123456789abcdef" : "01234567";
  while (allowed.find(LowerCase(number.Peek())) != std::string_view::npos) {
    digits += LowerCase(number.Peek());
    number.Skip();
  }
  std::uint32_t value = 0;
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, base == 'h' ? 16 : 8);
  if (error == std::errc::result_out_of_range) throw RuntimeError(ErrorNumber::Overflow);
  if (value <= 0xFFFF && number.Peek() != '&') return static_cast<std::int16_t>(value);
  return static_cast<std::int32_t>(value);
}

template <class Whole>
Whole Rounded(double value) {
  const double whole = std::nearbyint(value);
  const bool fits = whole >= static_cast<double>(std::numeric_limits<Whole>::min()) &&
                    whole <= static_cast<double>(std::numeric_limits<Whole>::max());
  if (!fits) throw RuntimeError(ErrorNumber::Overflow);
  return static_cast<Whole>(whole);
}

}  // namespace

std::string_view TrimBlanks(std::string_view text) {
  return Trimmed(text, " ");
}

std::string_view Field(const std::vector<std::string_view>& fields, std::size_t index) {
  if (index >= fields.size()) throw RuntimeError(ErrorNumber::SubscriptOutOfRange);
  return fields[index];
}

std::string WithoutQuotes(std::string_view text) {
  std::string plain(text);
  if (text.find('"') != std::string_view::npos) std::erase(plain, '"');
  return plain;
}

std::size_t FindIgnoringCase(std::string_view text, std::string_view wanted, std::size_t from) {
  if (from > text.size() || wanted.size() > text.size() - from) return std::string_view::npos;
  if (wanted.empty()) return from;
  const std::string lowered = LowerCase(wanted);
  return lowered.size() <= kShortPattern ? FindShort(text, lowered, from)
                                         : FindLong(text, lowered, from);
}

void ReplaceIgnoringCase(std::string& text, std::string_view oldText, std::string_view newText) {
  if (oldText.empty()) return;
  auto at = FindIgnoringCase(text, oldText);
  if (at == std::string_view::npos) return;
  std::string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (; at != std::string_view::npos; at = FindIgnoringCase(text, oldText, start)) {
    result.append(text, start, at - start).append(newText);
    start = at + oldText.size();
  }
  result.append(text, start);
  text = std::move(result);
}

bool ContainsIgnoringCase(std::string_view text, std::string_view wanted) {
  return FindIgnoringCase(text, wanted) != std::string_view::npos;
}

double NumericValue(std::string_view text) {
  NumberReader number(text);
  if (number.Peek() == '&') return NumberInBase(number);
  return ParseDecimal(number.Decimal()).value_or(0);
}

std::int32_t ToLong(double value) {
  return Rounded<std::int32_t>(value);
}

std::int16_t ToInteger(double value) {
  return Rounded<std::int16_t>(value);
}

std::int32_t TextToLong(std::string_view text) {
  const auto plain = TrimBlanks(text);
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error == std::errc::result_out_of_range) throw RuntimeError(ErrorNumber::Overflow);
  if (error != std::errc{} || end != plain.data() + plain.size() || !std::isfinite(value)) {
    throw RuntimeError(ErrorNumber::TypeMismatch, text);
  }
  return ToLong(value);
}

std::string ShortestDecimal(double value) {
  char buffer[512];
  const auto [end, error] =
      std::to_chars(std::begin(buffer), std::end(buffer), value, std::chars_format::fixed);
  return {std::begin(buffer), end};
}

bool ToFlag(std::string_view text) {
  const auto plain = TrimBlanks(text);
  if (EqualsIgnoringCase(plain, "true")) return true;
  if (EqualsIgnoringCase(plain, "false")) return false;
  double value = 0;
  const auto [end, error] = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (error != std::errc{} || end != plain.data() + plain.size() || !std::isfinite(value)) {
    throw RuntimeError(ErrorNumber::TypeMismatch, text);
  }
  return value != 0;
}

std::string Counted(std::size_t number, std::string_view one, std::string_view many) {
  return std::to_string(number).append(" ").append(number == 1 ? one : many);
}

std::string ShortList(const std::vector<std::string>& entries) {
  constexpr std::size_t kMost = 15;
  std::string list;
  for (std::size_t i = 0; i < entries.size() && i < kMost; ++i) {
    list.append(entries[i]).append(kLineBreak);
  }
  if (entries.size() > kMost) {
    list.append("... and " + std::to_string(entries.size() - kMost) + " more").append(kLineBreak);
  }
  return list;
}

std::string Shortened(std::string_view text, std::size_t most) {
  if (text.size() <= most) return std::string(text);
  std::string_view begin = text.substr(0, most / 2);
  std::string_view end = text.substr(text.size() - most / 2);
  const auto lastBreak = begin.rfind('\n');
  const auto firstBreak = end.find('\n');
  if (lastBreak != std::string_view::npos && lastBreak > most / 4) {
    begin = begin.substr(0, lastBreak + 1);
  }
  if (firstBreak < most / 4) end.remove_prefix(firstBreak + 1);
  std::string shortened(begin);
  if (!begin.ends_with('\n')) shortened += kLineBreak;
  const std::size_t leftOut = text.size() - begin.size() - end.size();
  shortened.append("... ").append(std::to_string(leftOut)).append(" characters left out ...");
  return shortened.append(kLineBreak).append(end);
}

}  // namespace gorbex
