#include "tests/support/memory_registry.h"

#include "platform/code_page.h"

namespace gorbex::test {
namespace {

std::string NameOf(RegistryRoot root) {
  switch (root) {
    case RegistryRoot::ClassesRoot:
      return "HKEY_CLASSES_ROOT";
    case RegistryRoot::CurrentUser:
      return "HKEY_CURRENT_USER";
    case RegistryRoot::LocalMachine:
      return "HKEY_LOCAL_MACHINE";
    case RegistryRoot::Users:
      return "HKEY_USERS";
    case RegistryRoot::PerformanceData:
      break;
  }
  return "HKEY_PERFORMANCE_DATA";
}

std::string PathOf(RegistryRoot root, std::string_view subKey) {
  while (subKey.ends_with('\\')) subKey.remove_suffix(1);
  return NameOf(root) + (subKey.empty() ? "" : "\\") + std::string(subKey);
}

std::string KeyOf(RegistryRoot root, std::string_view subKey) {
  return LowerCase(PathOf(root, subKey));
}

std::string Shown(const RegistryValue& value) {
  if (value.type == RegistryType::Text || value.type == RegistryType::ExpandText) {
    return value.bytes.substr(0, value.bytes.find('\0'));
  }
  std::string text;
  std::uint64_t number = 0;
  for (std::size_t i = 0; i < value.bytes.size(); ++i) {
    const auto byte = static_cast<unsigned char>(value.bytes[i]);
    text += "0123456789abcdef"[byte >> 4U];
    text += "0123456789abcdef"[byte & 0xFU];
    if (i < 4) number |= std::uint64_t{byte} << (8 * i);
  }
  return value.type == RegistryType::Number ? std::to_string(number) : text;
}

RegistryValue NumberValue(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(number >> shift);
  return {RegistryType::Number, bytes};
}

}  // namespace

MemoryRegistry::Values& MemoryRegistry::Key(RegistryRoot root, std::string_view subKey) {
  const auto end = subKey.rfind('\\');
  if (end != std::string_view::npos) Key(root, subKey.substr(0, end));
  return keys_[KeyOf(root, subKey)];
}

void MemoryRegistry::AddKey(RegistryRoot root, const std::string& subKey) {
  Key(root, subKey);
}

void MemoryRegistry::AddText(RegistryRoot root, const std::string& subKey, const std::string& name,
                             const std::string& text) {
  Key(root, subKey)[LowerCase(name)] = {RegistryType::Text, text + '\0'};
}

void MemoryRegistry::AddNumber(RegistryRoot root, const std::string& subKey,
                               const std::string& name, std::uint32_t number) {
  Key(root, subKey)[LowerCase(name)] = NumberValue(number);
}

std::string MemoryRegistry::Text(RegistryRoot root, const std::string& subKey,
                                 const std::string& name) const {
  const auto value = Value(root, subKey, name);
  return value ? Shown(*value) : "<absent>";
}

bool MemoryRegistry::HasKey(RegistryRoot root, std::string_view subKey) const {
  return subKey.empty() || keys_.contains(KeyOf(root, subKey));
}

std::optional<RegistryValue> MemoryRegistry::Value(RegistryRoot root, std::string_view subKey,
                                                   std::string_view name) const {
  const auto key = keys_.find(KeyOf(root, subKey));
  if (key == keys_.end()) return std::nullopt;
  const auto value = key->second.find(LowerCase(name));
  if (value == key->second.end()) return std::nullopt;
  return value->second;
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
