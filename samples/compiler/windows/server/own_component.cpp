#include "compiler/windows/server/own_component.h"

#include <olectl.h>

#include <array>
#include <optional>
#include <string_view>

#include "platform/component/type_library.h"
#include "platform/windows/registry.h"
#include "platform/windows/wide_text.h"

namespace gorbex::standin {
namespace {

constexpr int kLibraryNumber = 1;

HMODULE OwnModule() {
  HMODULE module = nullptr;
  const auto* const here = reinterpret_cast<const wchar_t*>(&OwnModule);
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT, here,
      &module);
  return module;
}

std::string_view LibraryBytes() {
  const HMODULE module = OwnModule();
  const HRSRC place = FindResourceW(module, MAKEINTRESOURCEW(kLibraryNumber), L"TYPELIB");
  const HGLOBAL loaded = place != nullptr ? LoadResource(module, place) : nullptr;
  if (loaded == nullptr) return {};
  return {static_cast<const char*>(LockResource(loaded)), SizeofResource(module, place)};
}

std::optional<ComponentKeys> Keys() {
  const auto library = ReadTypeLibrary(LibraryBytes());
  const auto path = FromWide(ComponentFile());
  if (!library || !path) return std::nullopt;
  return KeysOf(*library, *path);
}

bool RemoveTree(const std::string& key) {
  const LONG status = RegDeleteTreeW(HKEY_CLASSES_ROOT, ToWide(key).c_str());
  return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

}  // namespace

std::wstring ComponentFile() {
  std::array<wchar_t, 1024> path{};
  const DWORD length = GetModuleFileNameW(OwnModule(), path.data(), path.size());
  return {path.data(), length < path.size() ? length : 0};
}

ComPointer<ITypeLib> ComponentLibrary() {
  ComPointer<ITypeLib> library;
  LoadTypeLibEx(ComponentFile().c_str(), REGKIND_NONE, library.GetAddressOf());
  return library;
}

// As a 32-bit component does, which knows no other key for its library than "win32".
HRESULT RegisterComponent() {
  const auto keys = Keys();
  WindowsRegistry registry;
  return keys && WriteComponentKeys(registry, *keys) ? S_OK : SELFREG_E_CLASS;
}

HRESULT UnregisterComponent() {
  const auto keys = Keys();
  if (!keys) return SELFREG_E_CLASS;
  bool done = true;
  for (const auto& key : OwnKeysOf(*keys)) done = RemoveTree(key) && done;
  // Other versions of the library, which keep the key above, are other components.
  RegDeleteKeyW(HKEY_CLASSES_ROOT, ToWide("TypeLib\\" + keys->library.guid).c_str());
  return done ? S_OK : SELFREG_E_CLASS;
}

}  // namespace gorbex::standin
