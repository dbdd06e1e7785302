#include "freshness/build_record.h"

#include <algorithm>
#include <array>
#include <utility>

namespace gorbex {
namespace {

constexpr std::string_view kRecord = "2";
constexpr std::string_view kShared = "2c";
constexpr std::string_view kSpecial = "%|\t\r\n";

// A field of text, without the characters that separate fields.
std::string Escaped(std::string_view text) {
  if (text.find_first_of(kSpecial) == std::string_view::npos) return std::string(text);
  std::string escaped;
  for (const char letter : text) {
    const auto place = kSpecial.find(letter);
    if (place == std::string_view::npos) {
      escaped += letter;
    } else {
      escaped += {'%', static_cast<char>('0' + place)};
    }
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  if (text.find('%') == std::string_view::npos) return std::string(text);
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isEscape = text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '0' &&
                          text[i + 1] < static_cast<char>('0' + kSpecial.size());
    plain += isEscape ? kSpecial[static_cast<std::size_t>(text[++i] - '0')] : text[i];
  }
  return plain;
}

// Numbers have digits of 6 bits each, the highest first, and at most so many.
constexpr std::size_t kFullDigits = 11;
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

std::string FullNumber(std::uint64_t number) {
  std::string digits(kFullDigits, kDigits[0]);
  for (auto digit = digits.rbegin(); number > 0; ++digit, number >>= kBits) {
    *digit = kDigits[number & kMask];
  }
  return digits;
}

// Without leading zeros; one digit for 0.
std::string ShortNumber(std::uint64_t number) {
  const std::string digits = FullNumber(number);
  const auto first = digits.find_first_not_of(kDigits[0]);
  return first == std::string::npos ? digits.substr(kFullDigits - 1) : digits.substr(first);
}

// Nothing for an empty text, one that is too long, and one with other characters.
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

/// Takes a text apart, field by field.
class Fields {
 public:
  Fields(std::string_view text, char separator) : rest_(text), separator_(separator) {}

  /// Empty after the last one.
  std::string_view Next() {
    const auto end = std::min(rest_.find(separator_), rest_.size());
    const auto field = rest_.substr(0, end);
    isAtEnd_ = end == rest_.size();
    rest_.remove_prefix(std::min(end + 1, rest_.size()));
    return field;
  }
  [[nodiscard]] bool IsAtEnd() const { return isAtEnd_; }

 private:
  std::string_view rest_;
  char separator_;
  bool isAtEnd_ = false;
};

// The hash, then the look: time, identity and size.
std::string TextOf(const Fingerprint& print) {
  using State = Fingerprint::State;
  if (print.state == State::Missing) return "-";
  if (print.state == State::Unreadable) return "?";
  std::string text = FullNumber(print.hash.high) + FullNumber(print.hash.low);
  if (print.stamp) {
    text += FullNumber(print.stamp->ticks) + FullNumber(print.stamp->identity);
    text += ShortNumber(print.stamp->size);
  }
  return text;
}

std::optional<Fingerprint> PrintIn(std::string_view text) {
  using State = Fingerprint::State;
  if (text == "-") return Fingerprint{State::Missing};
  if (text == "?") return Fingerprint{State::Unreadable};
  std::array<std::uint64_t, 5> numbers{};
  std::size_t count = 0;
  for (; count < numbers.size() && !text.empty(); ++count) {
    const auto digits = text.substr(0, count + 1 < numbers.size() ? kFullDigits : text.size());
    const auto number = NumberIn(digits);
    if (!number) return std::nullopt;
    numbers[count] = *number;
    text.remove_prefix(digits.size());
  }
  if (count != 2 && count != numbers.size()) return std::nullopt;
  Fingerprint print{State::Read, {numbers[0], numbers[1]}};
  if (count > 2) print.stamp = FileStamp{numbers[4], numbers[2], numbers[3]};
  return print;
}

std::string Finished(std::string line) {
  const std::string hash = FullNumber(HashOf(line).low);
  return line.append("\t").append(hash);
}

// The line without its last field, which is the hash of all before it, and without its kind.
std::optional<std::string_view> Whole(std::string_view line, std::string_view kind) {
  const auto end = line.rfind('\t');
  const bool isOfKind = line.starts_with(kind) && line.substr(kind.size()).starts_with('\t');
  if (end == std::string_view::npos || !isOfKind || end <= kind.size()) return std::nullopt;
  if (NumberIn(line.substr(end + 1)) != HashOf(line.substr(0, end)).low) return std::nullopt;
  return line.substr(kind.size() + 1, end - kind.size() - 1);
}

std::optional<BuildInput::Kind> KindIn(std::string_view text) {
  const bool isKind =
      !text.empty() && std::string_view("PMCRSXKB").find(text[0]) != std::string_view::npos;
  return isKind ? std::optional(static_cast<BuildInput::Kind>(text[0])) : std::nullopt;
}

std::string OwnText(const BuildInput& input) {
  std::string text(1, static_cast<char>(input.kind));
  return text.append(Escaped(input.name)).append("|").append(TextOf(input.print));
}

std::optional<BuildInput> OwnInput(std::string_view text, const std::string& output) {
  const auto kind = KindIn(text);
  const auto end = text.find('|');
  if (!kind || end == std::string_view::npos) return std::nullopt;
  const auto print = PrintIn(text.substr(end + 1));
  if (!print) return std::nullopt;
  return BuildInput{*kind, Unescaped(text.substr(1, end - 1)),
                    *kind == BuildInput::Kind::Binary ? output : std::string(), *print};
}

std::string TextOf(const std::vector<LineId>& ids) {
  std::string text;
  for (const LineId id : ids) text += FullNumber(id);
  return text;
}

std::optional<std::vector<LineId>> IdsIn(std::string_view text) {
  std::vector<LineId> ids;
  ids.reserve(text.size() / kFullDigits);
  for (; !text.empty(); text.remove_prefix(std::min(kFullDigits, text.size()))) {
    const auto id = NumberIn(text.substr(0, kFullDigits));
    if (!id) return std::nullopt;
    ids.push_back(*id);
  }
  return ids;
}

bool TakeShared(BuildRecord& record, std::string_view text,
                const std::function<SharedInput(LineId)>& sharedInput) {
  const auto ids = IdsIn(text);
  if (!ids) return false;
  record.shared.reserve(ids->size());
  for (const LineId id : *ids) {
    auto input = sharedInput(id);
    if (!input) return false;
    record.shared.push_back(std::move(input));
  }
  return true;
}

// Everything of a record but its inputs.
std::optional<BuildRecord> HeadIn(Fields& fields) {
  const auto next = [&] { return Unescaped(fields.Next()); };
  BuildRecord record{next(), next(), next()};
  const auto duration = NumberIn(fields.Next());
  record.version = next();
  for (std::string& text : record.debug) text = next();
  if (!duration || fields.IsAtEnd()) return std::nullopt;
  record.duration = std::chrono::milliseconds(static_cast<std::int64_t>(*duration));
  return record;
}

}  // namespace

std::string LineOf(const BuildInput& shared) {
  std::string line(kShared);
  line.append("\t").append(1, static_cast<char>(shared.kind));
  for (const std::string* text : {&shared.name, &shared.place}) {
    line.append("\t").append(Escaped(*text));
  }
  return Finished(line.append("\t").append(TextOf(shared.print)));
}

std::optional<BuildInput> SharedInputOf(std::string_view line) {
  const auto whole = Whole(line, kShared);
  if (!whole) return std::nullopt;
  Fields fields(*whole, '\t');
  const auto kind = KindIn(fields.Next());
  std::string name = Unescaped(fields.Next());
  std::string place = Unescaped(fields.Next());
  const auto print = PrintIn(fields.Next());
  if (!kind || !print || !fields.IsAtEnd()) return std::nullopt;
  return BuildInput{*kind, std::move(name), std::move(place), *print};
}

LineId IdOf(std::string_view line) {
  return NumberIn(line.substr(line.rfind('\t') + 1)).value_or(0);
}

std::string LineOf(const BuildRecord& record, const std::vector<LineId>& shared) {
  std::string line(kRecord);
  const auto add = [&](const std::string& field) { line.append("\t").append(field); };
  add(Escaped(record.project));
  add(Escaped(record.output));
  add(Escaped(record.when));
  add(ShortNumber(static_cast<std::uint64_t>(record.duration.count())));
  add(Escaped(record.version));
  for (const std::string& text : record.debug) add(Escaped(text));
  add(TextOf(shared));
  for (const BuildInput& input : record.own) add(OwnText(input));
  return Finished(std::move(line));
}

std::optional<RecordKey> KeyOf(std::string_view line) {
  const auto whole = Whole(line, kRecord);
  if (!whole) return std::nullopt;
  Fields fields(*whole, '\t');
  std::string project = Unescaped(fields.Next());
  return RecordKey{std::move(project), Unescaped(fields.Next())};
}

std::optional<BuildRecord> RecordOf(std::string_view line,
                                    const std::function<SharedInput(LineId)>& sharedInput) {
  const auto whole = Whole(line, kRecord);
  if (!whole) return std::nullopt;
  Fields fields(*whole, '\t');
  auto record = HeadIn(fields);
  if (!record || !TakeShared(*record, fields.Next(), sharedInput)) return std::nullopt;
  while (!fields.IsAtEnd()) {
    auto input = OwnInput(fields.Next(), record->output);
    if (!input) return std::nullopt;
    record->own.push_back(std::move(*input));
  }
  return record;
}

std::vector<LineId> SharedIdsOf(std::string_view line) {
  const auto whole = Whole(line, kRecord);
  if (!whole) return {};
  Fields fields(*whole, '\t');
  if (!HeadIn(fields)) return {};
  return IdsIn(fields.Next()).value_or(std::vector<LineId>());
}

}  // namespace gorbex
