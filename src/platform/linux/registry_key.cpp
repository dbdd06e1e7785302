#include "platform/linux/registry_key.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kDeepest = 512;
constexpr std::size_t kLongestName = 255;

constexpr std::uint64_t kHighBits = 0x8080808080808080U;
constexpr std::uint64_t kCaseBits = 0x2020202020202020U;
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15U;

// Eight letters at a time. The case bit is set in all of them, which makes some signs equal to
// others but costs nothing; letters beyond ASCII need the table.
std::uint64_t Folded(std::string_view upTo8) {
  std::uint64_t letters = 0;
  std::memcpy(&letters, upTo8.data(), upTo8.size());
  if ((letters & kHighBits) != 0) {
    std::array<char, 8> lowered{};
    std::transform(upTo8.begin(), upTo8.end(), lowered.begin(),
                   [](char letter) { return LowerCase(letter); });
    std::memcpy(&letters, lowered.data(), lowered.size());
  }
  return letters | kCaseBits;
}

// Takes the first name off a path; empty at its end.
std::string_view TakeName(std::string_view& path) {
  while (!path.empty() && path.front() == '\\') path.remove_prefix(1);
  const auto name = path.substr(0, path.find('\\'));
  path.remove_prefix(name.size());
  return name;
}

bool IsPossible(std::string_view path) {
  std::size_t depth = 0;
  for (auto name = TakeName(path); !name.empty(); name = TakeName(path)) {
    if (++depth > kDeepest || name.size() > kLongestName) return false;
  }
  return true;
}

}  // namespace

std::size_t CaselessHash::operator()(std::string_view text) const {
  std::uint64_t hash = text.size();
  for (std::size_t at = 0; at < text.size(); at += 8) {
    hash = (hash ^ Folded(text.substr(at, 8))) * kMultiplier;
    hash ^= hash >> 32U;
  }
  return hash;
}

bool CaselessEqual::operator()(std::string_view a, std::string_view b) const {
  return a == b || EqualsIgnoringCase(a, b);
}

const RegistryKey* RegistryKey::Find(std::string_view path) const {
  const RegistryKey* key = this;
  for (auto name = TakeName(path); !name.empty(); name = TakeName(path)) {
    const auto found = key->subKeys.find(name);
    if (found == key->subKeys.end()) return nullptr;
    key = found->second.get();
  }
  return key;
}

RegistryKey* RegistryKey::Make(std::string_view path) {
  if (!IsPossible(path)) return nullptr;
  RegistryKey* key = this;
  for (auto name = TakeName(path); !name.empty(); name = TakeName(path)) {
    auto found = key->subKeys.find(name);
    if (found == key->subKeys.end()) {
      found = key->subKeys.emplace(name, std::make_unique<RegistryKey>()).first;
    }
    key = found->second.get();
  }
  return key;
}

std::unique_ptr<RegistryKey> RegistryKey::Take(std::string_view path) {
  RegistryKey* above = this;
  auto name = TakeName(path);
  for (auto next = TakeName(path); !next.empty(); next = TakeName(path)) {
    const auto found = above->subKeys.find(name);
    if (found == above->subKeys.end()) return nullptr;
    above = found->second.get();
    name = next;
  }
  const auto found = above->subKeys.find(name);
  if (found == above->subKeys.end()) return nullptr;
  auto key = std::move(found->second);
  above->subKeys.erase(found);
  return key;
}

}  // namespace gorbex
