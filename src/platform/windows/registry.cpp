#include "platform/windows/registry.h"

#include <windows.h>

#include <cstring>
#include <memory>
#include <type_traits>
#include <utility>

#include "platform/windows/wide_text.h"

namespace gorbex {
namespace {

struct Closer {
  void operator()(HKEY key) const { RegCloseKey(key); }
};

/// Owns an open key; null when the system refuses it.
using OpenKey = std::unique_ptr<std::remove_pointer_t<HKEY>, Closer>;

// Null for a root without keys: that of the performance data holds counters.
HKEY RootKey(RegistryRoot root) {
  constexpr auto kFirst = static_cast<std::uint32_t>(RegistryRoot::ClassesRoot);
  const HKEY keys[] = {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE, HKEY_USERS};
  const auto number = static_cast<std::uint32_t>(root) - kFirst;
  return number < std::size(keys) ? keys[number] : nullptr;
}

// A zero would end the name early, and so name another key.
bool IsName(std::string_view name) {
  return name.find('\0') == std::string_view::npos;
}

OpenKey Open(RegistryRoot root, std::string_view subKey) {
  HKEY key = nullptr;
  if (!IsName(subKey) || RootKey(root) == nullptr) return nullptr;
  const auto path = ToWide(subKey);
  const LONG status = RegOpenKeyExW(RootKey(root), path.c_str(), 0, KEY_QUERY_VALUE, &key);
  return OpenKey(status == ERROR_SUCCESS ? key : nullptr);
}

OpenKey Make(RegistryRoot root, std::string_view subKey, REGSAM rights) {
  HKEY key = nullptr;
  if (!IsName(subKey) || RootKey(root) == nullptr) return nullptr;
  const auto path = ToWide(subKey);
  const LONG status =
      RegCreateKeyExW(RootKey(root), path.c_str(), 0, nullptr, 0, rights, nullptr, &key, nullptr);
  return OpenKey(status == ERROR_SUCCESS ? key : nullptr);
}

std::string TextOf(std::string_view bytes) {
  std::wstring wide(bytes.size() / sizeof(wchar_t), L'\0');
  std::memcpy(wide.data(), bytes.data(), wide.size() * sizeof(wchar_t));
  return FromWideRoughly(wide);
}

bool Set(HKEY key, const std::wstring& name, RegistryType type, const void* data,
         std::size_t size) {
  return RegSetValueExW(key, name.c_str(), 0, static_cast<DWORD>(type),
                        static_cast<const BYTE*>(data), static_cast<DWORD>(size)) == ERROR_SUCCESS;
}

}  // namespace

bool WindowsRegistry::HasKey(RegistryRoot root, std::string_view subKey) const {
  return Open(root, subKey) != nullptr;
}

std::optional<RegistryValue> WindowsRegistry::Value(RegistryRoot root, std::string_view subKey,
                                                    std::string_view name) const {
  const OpenKey key = Open(root, subKey);
  if (!key || !IsName(name)) return std::nullopt;
  const auto wideName = ToWide(name);
  std::string bytes(256, '\0');
  DWORD type = 0;
  LONG status = ERROR_MORE_DATA;
  while (status == ERROR_MORE_DATA) {  // the value may grow between two calls
    auto size = static_cast<DWORD>(bytes.size());
    status = RegQueryValueExW(key.get(), wideName.c_str(), nullptr, &type,
                              reinterpret_cast<BYTE*>(bytes.data()), &size);
    bytes.resize(size);
  }
  if (status != ERROR_SUCCESS) return std::nullopt;
  const auto known = static_cast<RegistryType>(type);
  return RegistryValue{known, IsText(known) ? TextOf(bytes) : std::move(bytes)};
}

bool WindowsRegistry::CreateKey(RegistryRoot root, std::string_view subKey) {
  return Make(root, subKey, KEY_QUERY_VALUE) != nullptr;
}

bool WindowsRegistry::SetValue(RegistryRoot root, std::string_view subKey, std::string_view name,
                               const RegistryValue& value) {
  if (!IsName(name)) return false;
  const OpenKey key = Make(root, subKey, KEY_SET_VALUE);
  if (!key) return false;
  if (!IsText(value.type)) {
    return Set(key.get(), ToWide(name), value.type, value.bytes.data(), value.bytes.size());
  }
  // When a zero follows the data, the system takes it for a forgotten one and adds it.
  const auto text = ToWide(value.bytes) + L'!';
  return Set(key.get(), ToWide(name), value.type, text.data(), (text.size() - 1) * sizeof(wchar_t));
}

}  // namespace gorbex
