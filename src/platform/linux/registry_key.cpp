#include "platform/linux/registry_key.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "platform/code_page.h"

namespace gorbex {
namespace {

constexpr std::size_t kDeepest = 512;
constexpr std::size_t kLongestName = 255;

// Nearly every letter is ASCII, which needs no call.
char Folded(char letter) {
  if (letter >= 'A' && letter <= 'Z') return static_cast<char>(letter + ('a' - 'A'));
  return letter >= 0 ? letter : LowerCase(letter);
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
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char letter : text) {
    hash = (hash ^ static_cast<unsigned char>(Folded(letter))) * 0x100000001B3U;
  }
  return hash;
}

bool CaselessEqual::operator()(std::string_view a, std::string_view b) const {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Folded(x) == Folded(y); });
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
