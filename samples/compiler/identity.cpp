#include "compiler/identity.h"

#include <algorithm>
#include <random>

#include "compiler/sha1.h"
#include "platform/code_page.h"

namespace gorbex::standin {
namespace {

constexpr Uuid kProjectNames = {0x8D, 0xE7, 0x39, 0x36, 0xBB, 0x4D, 0x47, 0x0E,
                                0x90, 0x13, 0x2A, 0x16, 0x1C, 0xC7, 0x4D, 0x0D};
constexpr Uuid kSeeds = {0x3B, 0x8E, 0x1A, 0x52, 0x6F, 0x0C, 0x4D, 0x9A,
                         0xA1, 0x77, 0x5E, 0x24, 0xC3, 0x90, 0x18, 0xE6};
constexpr std::string_view kPattern = "{00000000-0000-0000-0000-000000000000}";
constexpr std::string_view kDigits = "0123456789ABCDEF";

void Stamp(Uuid& uuid, unsigned version) {
  uuid[6] = static_cast<std::uint8_t>((uuid[6] & 0x0FU) | version << 4);
  uuid[8] = static_cast<std::uint8_t>((uuid[8] & 0x3FU) | 0x80U);
}

Uuid RandomUuid() {
  std::random_device source;
  Uuid uuid{};
  for (auto& byte : uuid) byte = static_cast<std::uint8_t>(source());
  Stamp(uuid, 4);
  return uuid;
}

// A version 5 UUID: the same for the same name, everywhere.
Uuid NameBasedUuid(const Uuid& space, std::string_view name) {
  std::string text(space.begin(), space.end());
  text.append(name);
  const auto digest = Sha1(text);
  Uuid uuid{};
  std::copy_n(digest.begin(), uuid.size(), uuid.begin());
  Stamp(uuid, 5);
  return uuid;
}

// In braces and capital letters, as the registry writes it.
std::string BracedText(const Uuid& uuid) {
  std::string text(kPattern);
  std::size_t digit = 0;
  for (char& letter : text) {
    if (letter != '0') continue;
    const unsigned byte = uuid[digit / 2];
    letter = kDigits[digit % 2 == 0 ? byte >> 4 : byte & 0x0FU];
    ++digit;
  }
  return text;
}

}  // namespace

std::optional<Uuid> ParsedUuid(std::string_view text) {
  if (text.size() != kPattern.size()) return std::nullopt;
  Uuid uuid{};
  std::size_t digit = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isDigit = kPattern[i] == '0';
    const auto value = kDigits.find(UpperCase(text.substr(i, 1)));
    if (isDigit ? value == std::string_view::npos : text[i] != kPattern[i]) return std::nullopt;
    if (!isDigit) continue;
    const std::size_t high = uuid[digit / 2];
    uuid[digit / 2] = static_cast<std::uint8_t>(high << 4U | value);
    ++digit;
  }
  return uuid;
}

std::string NewIdentities::Next(std::string_view name, std::string_view old) const {
  if (seed_.empty()) return BracedText(RandomUuid());
  const auto space = NameBasedUuid(kSeeds, seed_);
  return BracedText(NameBasedUuid(space, std::string(old) + ToUtf8(LowerCase(name))));
}

std::string FirstIdentity(std::string_view name) {
  return BracedText(NameBasedUuid(kProjectNames, ToUtf8(LowerCase(name))));
}

}  // namespace gorbex::standin
