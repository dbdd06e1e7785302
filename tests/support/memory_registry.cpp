#include "tests/support/memory_registry.h"

#include <array>

#include "platform/code_page.h"

namespace gorbex::test {
namespace {

std::string PathOf(RegistryRoot root, std::string_view subKey) {
  if (subKey.ends_with('\\')) subKey.remove_suffix(1);
  constexpr std::array kNames = {"HKEY_CLASSES_ROOT", "HKEY_CURRENT_USER", "HKEY_LOCAL_MACHINE",
                                 "HKEY_USERS", "HKEY_PERFORMANCE_DATA"};
  const auto first = static_cast<std::uint32_t>(RegistryRoot::ClassesRoot);
  return std::string(kNames.at(static_cast<std::uint32_t>(root) - first))
      .append(subKey.empty() ? "" : "\\")
      .append(subKey);
}

std::string KeyOf(RegistryRoot root, std::string_view subKey) {
  return LowerCase(PathOf(root, subKey));
}

std::string Shown(const RegistryValue& value) {
  if (value.type == RegistryType::Text) return value.bytes.substr(0, value.bytes.find('\0'));
  std::string text;
  for (const char byte : value.bytes) {
    text += "0123456789abcdef"[static_cast<unsigned char>(byte) >> 4U];
    text += "0123456789abcdef"[static_cast<unsigned char>(byte) & 0xFU];
  }
  return text;
}

}  // namespace

MemoryRegistry::Values& MemoryRegistry::Key(RegistryRoot root, std::string_view subKey) {
  const auto end = subKey.rfind('\\');
  if (end != std::string_view::npos) Key(root, subKey.substr(0, end));
  return keys_[KeyOf(root, subKey)];
}

void MemoryRegistry::AddText(RegistryRoot root, const std::string& subKey, const std::string& name,
                             const std::string& text) {
  Key(root, subKey)[LowerCase(name)] = {RegistryType::Text, text + '\0'};
}

std::string MemoryRegistry::Text(RegistryRoot root, const std::string& subKey,
                                 const std::string& name) const {
  const auto value = Value(root, subKey, name);
  return value ? Shown(*value) : "<absent>";
}

bool MemoryRegistry::HasKey(RegistryRoot root, std::string_view subKey) const {
  return keys_.contains(KeyOf(root, subKey));
}

std::optional<RegistryValue> MemoryRegistry::Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const {
  const auto key = keys_.find(KeyOf(root, subKey));
  if (key == keys_.end()) return std::nullopt;
  const auto value = key->second.find(LowerCase(name));
  return value == key->second.end() ? std::nullopt : std::optional(value->second);
}

bool MemoryRegistry::CreateKey(RegistryRoot root, std::string_view subKey) {
  if (HasKey(root, subKey)) return true;
  if (refuses) return false;
  Key(root, subKey);
  journal_.push_back("registry " + PathOf(root, subKey));
  return true;
}

bool MemoryRegistry::SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                              const RegistryValue& value) {
  if (refuses) return false;
  Key(root, subKey)[LowerCase(name)] = value;
  journal_.push_back("registry " + PathOf(root, subKey) + " " + std::string(name) + "=" +
                     Shown(value));
  return true;
}

}  // namespace gorbex::test
