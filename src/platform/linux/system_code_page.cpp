#include "platform/linux/system_code_page.h"

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <functional>
#include <optional>
#include <system_error>

#include "platform/linux/host_file.h"
#include "platform/linux/registry_text.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

constexpr std::string_view kKeyEnd = "\\\\Nls\\\\CodePage]";
constexpr std::string_view kValue = "ACP";
constexpr unsigned kDefault = 1252;

// A registry file may be large, and nothing else of it is wanted yet.
std::string SectionOf(const std::string& text) {
  const auto hash = [](char letter) { return std::hash<char>{}(LowerCase(letter)); };
  const auto equal = [](char a, char b) { return LowerCase(a) == LowerCase(b); };
  const std::boyer_moore_horspool_searcher key(kKeyEnd.begin(), kKeyEnd.end(), hash, equal);
  const auto found = std::search(text.begin(), text.end(), key);
  if (found == text.end()) return {};
  const auto start = static_cast<std::size_t>(found - text.begin()) + kKeyEnd.size();
  return text.substr(start, text.find("\n[", start) - start);
}

std::optional<std::string> ValueIn(const std::filesystem::path& registryFile) {
  try {
    const auto text = ReadHostFileIfThere(registryFile.native());
    RegistryKey key;
    ReadRegistryText("[Key]" + SectionOf(text.value_or("")), key);
    const auto& values = key.Make("Key")->values;
    const auto found = values.find(kValue);
    if (found == values.end()) return std::nullopt;
    std::string number = found->second.bytes.substr(0, found->second.bytes.find('\0'));
    return number.empty() ? std::nullopt : std::optional(std::move(number));
  } catch (const std::system_error&) {
    return std::nullopt;  // whoever reads the whole registry says that it cannot be read
  }
}

/// The system's own table of a code page.
class Converter {
 public:
  explicit Converter(const std::string& name) : table_(iconv_open("UTF-16LE", name.c_str())) {}
  ~Converter() {
    if (*this) iconv_close(table_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;

  explicit operator bool() const { return reinterpret_cast<std::intptr_t>(table_) != -1; }

  /// The characters that one byte makes: none or several for a part of a longer character.
  [[nodiscard]] std::u16string CharactersOf(char byte) const {
    std::array<char16_t, 4> characters{};
    char* from = &byte;
    char* to = reinterpret_cast<char*>(characters.data());
    std::size_t left = 1;
    std::size_t room = sizeof characters;
    iconv(table_, nullptr, nullptr, nullptr, nullptr);
    const bool isWhole = iconv(table_, &from, &left, &to, &room) != kFailed;
    if (!isWhole && errno == EINVAL) return {};
    if (!isWhole) return {static_cast<unsigned char>(byte)};  // undefined: means itself
    iconv(table_, nullptr, nullptr, &to, &room);
    return {characters.begin(), characters.end() - room / sizeof(char16_t)};
  }

 private:
  static constexpr auto kFailed = static_cast<std::size_t>(-1);

  iconv_t table_;
};

unsigned NumberOf(const std::string& text) {
  const auto number = WholeNumber<unsigned>(text);
  if (!number) throw UnusableCodePage(text);
  return *number;
}

}  // namespace

CodePage CodePageNumbered(unsigned number) {
  const auto digits = std::to_string(number);
  const Converter converter("CP" + digits);
  if (!converter) throw UnusableCodePage(digits);
  CodePage::UpperHalf half{};
  for (std::size_t i = 0; i < half.size(); ++i) {
    const auto characters = converter.CharactersOf(static_cast<char>(0x80 + i));
    if (characters.size() != 1) throw UnusableCodePage(digits);
    half[i] = characters.front();
  }
  return CodePage(half);
}

CodePage SystemCodePage(const std::filesystem::path& prefixRoot) {
  auto value = ValueIn(prefixRoot / "gorbexbuilder.reg");
  if (!value) value = ValueIn(prefixRoot / "system.reg");
  const unsigned number = value ? NumberOf(*value) : kDefault;
  return number == kDefault ? CodePage::Windows1252() : CodePageNumbered(number);
}

}  // namespace gorbex
