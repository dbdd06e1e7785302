#include "freshness/build_record.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <system_error>

#include "core/text.h"

namespace gorbex {
namespace {

constexpr std::string_view kVersion = "1";
constexpr std::size_t kHeadFields = 8;
constexpr std::size_t kInputFields = 7;
constexpr std::string_view kSpecial = "%|\t\r\n";
constexpr int kBase = 36;

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

std::string Digits(std::uint64_t number) {
  std::array<char, 16> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, kBase).ptr;
  return {digits.data(), end};
}

std::optional<std::uint64_t> Number(std::string_view text) {
  std::uint64_t number = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number, kBase);
  return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

std::string HashText(const ContentHash& hash) {
  return Digits(hash.high) + "." + Digits(hash.low);
}

std::optional<ContentHash> HashIn(std::string_view text) {
  const auto dot = text.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  const auto high = Number(text.substr(0, dot));
  const auto low = Number(text.substr(dot + 1));
  return high && low ? std::optional(ContentHash{*high, *low}) : std::nullopt;
}

std::string TextOf(const BuildInput& input) {
  using State = Fingerprint::State;
  std::string text(1, static_cast<char>(input.kind));
  const auto add = [&](const std::string& field) { text.append("|").append(field); };
  add(Escaped(input.name));
  add(Escaped(input.place));
  const Fingerprint& print = input.print;
  add(print.state == State::Read ? HashText(print.hash)
                                 : (print.state == State::Missing ? "-" : "?"));
  add(print.stamp ? Digits(print.stamp->size) : "");
  add(print.stamp ? Digits(print.stamp->ticks) : "");
  add(print.stamp ? Digits(print.stamp->identity) : "");
  return text;
}

bool IsKind(std::string_view text) {
  return text.size() == 1 && std::string_view("PMCRSXKB").find(text[0]) != std::string_view::npos;
}

using InputFields = std::array<std::string_view, kInputFields>;

// Nothing when there are more or fewer.
std::optional<InputFields> FieldsOf(std::string_view text) {
  InputFields fields;
  for (std::size_t i = 0; i + 1 < kInputFields; ++i) {
    const auto end = text.find('|');
    if (end == std::string_view::npos) return std::nullopt;
    fields[i] = text.substr(0, end);
    text.remove_prefix(end + 1);
  }
  fields.back() = text;
  return text.find('|') == std::string_view::npos ? std::optional(fields) : std::nullopt;
}

std::optional<Fingerprint> PrintIn(const InputFields& fields) {
  using State = Fingerprint::State;
  if (fields[3] == "-") return Fingerprint{State::Missing};
  if (fields[3] == "?") return Fingerprint{State::Unreadable};
  const auto hash = HashIn(fields[3]);
  if (!hash) return std::nullopt;
  Fingerprint print{State::Read, *hash};
  const auto size = Number(fields[4]);
  const auto ticks = Number(fields[5]);
  const auto identity = Number(fields[6]);
  if (size && ticks && identity) print.stamp = FileStamp{*size, *ticks, *identity};
  return print;
}

std::optional<BuildInput> InputOf(std::string_view text) {
  const auto found = FieldsOf(text);
  if (!found || !IsKind(found->front())) return std::nullopt;
  const InputFields& fields = *found;
  const auto print = PrintIn(fields);
  if (!print) return std::nullopt;
  return BuildInput{static_cast<BuildInput::Kind>(fields[0][0]), Unescaped(fields[1]),
                    Unescaped(fields[2]), *print};
}

// The line without its last field, which is the hash of all before it.
std::optional<std::string_view> Whole(std::string_view line) {
  const auto end = line.rfind('\t');
  if (end == std::string_view::npos) return std::nullopt;
  const auto hash = HashIn(line.substr(end + 1));
  const auto rest = line.substr(0, end);
  const bool isOurs = rest.starts_with(kVersion) && rest.substr(kVersion.size()).starts_with('\t');
  return isOurs && hash == HashOf(rest) ? std::optional(rest) : std::nullopt;
}

}  // namespace

std::string LineOf(const BuildRecord& record) {
  std::string line(kVersion);
  const auto add = [&](const std::string& field) { line.append("\t").append(field); };
  add(Escaped(record.project));
  add(Escaped(record.output));
  add(Escaped(record.when));
  add(Digits(static_cast<std::uint64_t>(record.duration.count())));
  add(Escaped(record.version));
  for (const std::string& text : record.debug) add(Escaped(text));
  for (const BuildInput& input : record.inputs) add(TextOf(input));
  const std::string hash = HashText(HashOf(line));
  return line.append("\t").append(hash);
}

std::optional<RecordKey> KeyOf(std::string_view line) {
  const auto whole = Whole(line);
  if (!whole) return std::nullopt;
  const auto afterProject = whole->find('\t', kVersion.size() + 1);
  if (afterProject == std::string_view::npos) return std::nullopt;
  const auto project = whole->substr(kVersion.size() + 1, afterProject - kVersion.size() - 1);
  const auto rest = whole->substr(afterProject + 1);
  return RecordKey{Unescaped(project), Unescaped(rest.substr(0, rest.find('\t')))};
}

std::optional<BuildRecord> RecordOf(std::string_view line) {
  const auto whole = Whole(line);
  if (!whole) return std::nullopt;
  const auto fields = Split(*whole, '\t');
  if (fields.size() < kHeadFields) return std::nullopt;
  const auto duration = Number(fields[4]);
  if (!duration) return std::nullopt;
  BuildRecord record{Unescaped(fields[1]), Unescaped(fields[2]), Unescaped(fields[3])};
  record.duration = std::chrono::milliseconds(static_cast<std::int64_t>(*duration));
  record.version = Unescaped(fields[5]);
  record.debug = {Unescaped(fields[6]), Unescaped(fields[7])};
  record.inputs.reserve(fields.size() - kHeadFields);
  for (std::size_t i = kHeadFields; i < fields.size(); ++i) {
    auto input = InputOf(fields[i]);
    if (!input) return std::nullopt;
    record.inputs.push_back(std::move(*input));
  }
  return record;
}

}  // namespace gorbex
