#include "platform/linux/registry_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/code_page.h"
#include "platform/header_fields.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr std::string_view kHeader = "WINE REGISTRY Version 2";
constexpr std::string_view kExportHeader = "Windows Registry Editor Version 5.00";

char ByteOf(std::uint32_t character) {
  return FromUnicode(character).value_or('?');
}

std::string FromUtf16(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size() / 2);
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += ByteOf(static_cast<unsigned char>(bytes[i]) +
                   256U * static_cast<unsigned char>(bytes[i + 1]));
  }
  return text;
}

std::string ToUtf16(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  for (const char letter : text) {
    const auto character = ToUnicode(letter);
    bytes += static_cast<char>(character & 0xFFU);
    bytes += static_cast<char>(character >> 8U);
  }
  return bytes;
}

std::string FourBytes(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

std::uint32_t NumberOf(std::string_view fourBytes) {
  std::uint32_t number = 0;
  for (unsigned i = 0; i < 4; ++i) {
    number |= std::uint32_t{static_cast<unsigned char>(fourBytes[i])} << (8 * i);
  }
  return number;
}

// Takes a number of at most so many digits off the front; nothing when there is no digit.
std::optional<std::uint32_t> TakeNumber(std::string_view& text, int base, std::size_t mostDigits) {
  std::uint32_t number = 0;
  const auto* begin = text.data();
  const auto* end = begin + std::min(text.size(), mostDigits);
  const auto result = std::from_chars(begin, end, number, base);
  if (result.ec != std::errc() || result.ptr == begin) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(result.ptr - begin));
  return number;
}

bool TakePrefix(std::string_view& text, std::string_view prefix) {
  if (!text.starts_with(prefix)) return false;
  text.remove_prefix(prefix.size());
  return true;
}

// The character of an escape sequence; the text begins after its backslash.
char TakeEscaped(std::string_view& text) {
  constexpr std::string_view kLetters = "abefnrtv";
  constexpr std::string_view kMeanings = "\a\b\x1B\f\n\r\t\v";
  if (const auto number = TakeNumber(text, 8, 3)) return ByteOf(*number);
  const char letter = text.front();
  text.remove_prefix(1);
  if (letter == 'x') {
    const auto number = TakeNumber(text, 16, 4);
    return number ? ByteOf(*number) : 'x';
  }
  const auto meaning = kLetters.find(letter);
  return meaning == std::string_view::npos ? letter : kMeanings[meaning];
}

// Takes text up to the unescaped end character and that character; nothing when it never comes.
std::optional<std::string> TakeUpTo(std::string_view& text, char end) {
  const std::array<char, 2> stops = {end, '\\'};
  std::string plain;
  for (;;) {
    const auto stop = text.find_first_of(std::string_view(stops.data(), stops.size()));
    if (stop == std::string_view::npos) return std::nullopt;
    plain.append(text.substr(0, stop));
    const bool isEnd = text[stop] == end;
    text.remove_prefix(stop + 1);
    if (isEnd) return plain;
    if (text.empty()) return std::nullopt;
    plain += TakeEscaped(text);
  }
}

/// Goes once over a file's text, line by line.
class Reader {
 public:
  /// Names of keys have no escapes in an export.
  enum class Keys { Escaped, Plain };

  Reader(std::string_view text, Keys keys, RegistryKey& top)
      : rest_(text), keys_(keys), top_(top) {}

  std::size_t Run() {
    while (!rest_.empty()) {
      if (!ReadLine(TakeLine(rest_))) ++senselessLines_;
    }
    return senselessLines_;
  }

 private:
  bool ReadLine(std::string_view line) {
    if (line.empty()) return true;
    switch (line.front()) {
      case '[':
        return ReadKey(line.substr(1));
      case '@':
      case '"':
        return ReadValue(line);
      case '#':
      case ';':
        return true;
      default:
        return line.starts_with(keys_ == Keys::Plain ? kExportHeader : kHeader);
    }
  }

  bool ReadKey(std::string_view line) {
    const auto path = keys_ == Keys::Plain ? PlainPath(line) : TakeUpTo(line, ']');
    key_ = path ? top_.Make(*path) : nullptr;
    return key_ != nullptr;
  }

  static std::optional<std::string> PlainPath(std::string_view line) {
    const auto end = line.rfind(']');
    if (end == std::string_view::npos) return std::nullopt;
    return std::string(line.substr(0, end));
  }

  bool ReadValue(std::string_view line) {
    std::optional<std::string> name = std::string();
    if (!TakePrefix(line, "@")) {
      line.remove_prefix(1);
      name = TakeUpTo(line, '"');
    }
    if (!name || !TakePrefix(line, "=")) return false;
    auto value = ReadData(line);
    if (!value || key_ == nullptr) return false;
    key_->values.insert_or_assign(std::move(*name), std::move(*value));
    return true;
  }

  std::optional<RegistryValue> ReadData(std::string_view data) {
    if (TakePrefix(data, "\"")) return ReadQuoted(RegistryType::Text, data);
    if (TakePrefix(data, "dword:")) return ReadNumber(data);
    if (TakePrefix(data, "hex:")) return ReadBytes(RegistryType::Binary, data);
    const bool isHex = TakePrefix(data, "hex(");
    if (!isHex && !TakePrefix(data, "str(")) return std::nullopt;
    const auto number = TakeNumber(data, 16, 8);
    if (!number || !TakePrefix(data, "):")) return std::nullopt;
    const auto type = static_cast<RegistryType>(*number);
    if (isHex) return ReadBytes(type, data);
    if (!TakePrefix(data, "\"")) return std::nullopt;
    return ReadQuoted(type, data);
  }

  static std::optional<RegistryValue> ReadQuoted(RegistryType type, std::string_view data) {
    auto text = TakeUpTo(data, '"');
    if (!text) return std::nullopt;
    return RegistryValue{type, std::move(*text) + '\0'};
  }

  static std::optional<RegistryValue> ReadNumber(std::string_view data) {
    const auto number = TakeNumber(data, 16, 8);
    if (!number || !data.empty()) return std::nullopt;
    return RegistryValue{RegistryType::Number, FourBytes(*number)};
  }

  // Bytes continue in the next line after a backslash.
  std::optional<RegistryValue> ReadBytes(RegistryType type, std::string_view data) {
    std::string bytes;
    for (;;) {
      while (!data.empty() && (data.front() == ' ' || data.front() == ',')) data.remove_prefix(1);
      if (data.empty()) break;
      if (data == "\\") {
        data = TakeLine(rest_);
        continue;
      }
      const auto byte = TakeNumber(data, 16, 2);
      if (!byte) return std::nullopt;
      bytes += static_cast<char>(*byte);
    }
    return RegistryValue{type, IsText(type) ? FromUtf16(bytes) : std::move(bytes)};
  }

  std::string_view rest_;
  Keys keys_;
  RegistryKey& top_;
  RegistryKey* key_ = nullptr;
  std::size_t senselessLines_ = 0;
};

constexpr std::string_view kHexDigits = "0123456789abcdef";

void AppendHex(std::string& text, std::uint32_t number, unsigned digits) {
  for (unsigned i = digits; i-- > 0;) text += kHexDigits[(number >> (4 * i)) & 0xFU];
}

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (byte < 0x20) {
      escaped += '\\';
      for (unsigned i = 3; i-- > 0;) escaped += static_cast<char>('0' + ((byte >> (3 * i)) & 7U));
    } else if (byte >= 0x7F) {
      escaped += "\\x";
      AppendHex(escaped, ToUnicode(letter), 4);
    } else {
      if (std::string_view("\\\"[]").find(letter) != std::string_view::npos) escaped += '\\';
      escaped += letter;
    }
  }
  return escaped;
}

void AppendBytes(std::string& text, std::string_view bytes) {
  constexpr std::size_t kBytesPerLine = 24;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (i > 0) text += i % kBytesPerLine == 0 ? ",\\\n  " : ",";
    AppendHex(text, static_cast<unsigned char>(bytes[i]), 2);
  }
}

void AppendData(std::string& text, const RegistryValue& value) {
  if (value.type == RegistryType::Number && value.bytes.size() == 4) {
    text += "dword:";
    AppendHex(text, NumberOf(value.bytes), 8);
    return;
  }
  const auto number = static_cast<std::uint32_t>(value.type);
  const std::string type = "(" + Hexadecimal(number) + "):";
  if (IsText(value.type) && value.bytes.ends_with('\0')) {
    if (value.type != RegistryType::Text) text += "str" + type;
    const auto withoutZero = std::string_view(value.bytes).substr(0, value.bytes.size() - 1);
    text.append("\"").append(Escaped(withoutZero)).append("\"");
    return;
  }
  text += value.type == RegistryType::Binary ? "hex:" : "hex" + type;
  AppendBytes(text, IsText(value.type) ? ToUtf16(value.bytes) : value.bytes);
}

template <typename T>
std::vector<const typename CaselessMap<T>::value_type*> Sorted(const CaselessMap<T>& map) {
  std::vector<const typename CaselessMap<T>::value_type*> entries;
  entries.reserve(map.size());
  for (const auto& entry : map) entries.push_back(&entry);
  std::sort(entries.begin(), entries.end(),
            [](const auto* a, const auto* b) { return LowerCase(a->first) < LowerCase(b->first); });
  return entries;
}

void AppendKey(std::string& text, const std::string& path, const RegistryKey& key) {
  if (!path.empty() && (!key.values.empty() || key.subKeys.empty())) {
    text.append("\n[").append(path).append("]\n");
    for (const auto* entry : Sorted(key.values)) {
      text += entry->first.empty() ? "@" : "\"" + Escaped(entry->first) + "\"";
      text += '=';
      AppendData(text, entry->second);
      text += '\n';
    }
  }
  for (const auto* entry : Sorted(key.subKeys)) {
    const std::string_view separator = path.empty() ? "" : "\\\\";
    AppendKey(text, std::string(path).append(separator).append(Escaped(entry->first)),
              *entry->second);
  }
}

}  // namespace

std::size_t ReadRegistryText(std::string_view text, RegistryKey& into) {
  return Reader(text, Reader::Keys::Escaped, into).Run();
}

std::size_t ReadRegistryExport(std::string_view utf16, RegistryKey& into) {
  constexpr std::string_view kByteOrderMark = "\xFF\xFE";
  if (utf16.starts_with(kByteOrderMark)) utf16.remove_prefix(kByteOrderMark.size());
  const auto text = FromUtf16(utf16);
  return Reader(text, Reader::Keys::Plain, into).Run();
}

std::string WriteRegistryText(const RegistryKey& top) {
  std::string text(kHeader);
  text += "\n;; Keys are written with the names of their roots\n";
  AppendKey(text, {}, top);
  return text;
}

}  // namespace gorbex
