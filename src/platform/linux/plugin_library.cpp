#include "platform/linux/plugin_library.h"

#include <dlfcn.h>

#include <array>
#include <fstream>
#include <string_view>

#include "platform/code_page.h"
#include "platform/runtime_error.h"

namespace gorbex {
namespace {

constexpr const char* kEntryPoint = "gorbex_plugin_class";

[[noreturn]] void Refuse(const std::string& shownName, std::string_view reason) {
  throw RuntimeError::WithDescription(ErrorNumber::CannotCreateObject,
                                      "'" + shownName + "' " + std::string(reason));
}

// Asked before the loader is, whose words for such files nobody understands.
void RequireSharedLibrary(const std::string& hostPath, const std::string& shownName) {
  std::array<char, 4> begin{};
  std::ifstream file(hostPath, std::ios::binary);
  if (!file) Refuse(shownName, "cannot be read");
  file.read(begin.data(), begin.size());
  const std::string_view magic(begin.data(), static_cast<std::size_t>(file.gcount()));
  if (magic.starts_with("MZ")) {
    Refuse(shownName, "is a Windows DLL; on Linux only plug-ins can be tested");
  }
  if (magic !=
      "\x7F"
      "ELF")
    Refuse(shownName, "is not a Linux shared library");
}

std::string LoaderWords() {
  const char* words = dlerror();
  return FromUtf8(words == nullptr ? "" : words).value_or("its reason cannot be shown");
}

std::shared_ptr<void> Load(const std::string& hostPath, const std::string& shownName) {
  void* library = dlopen(hostPath.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) Refuse(shownName, "cannot be loaded: " + LoaderWords());
  return {library, [](void* loaded) { dlclose(loaded); }};
}

// Nothing but the version may be looked at before it is known.
void RequireVersion(const GorbexClass& table, const std::string& shownName) {
  if (table.abi == GORBEX_PLUGIN_ABI) return;
  Refuse(shownName, "is made for version " + std::to_string(table.abi) +
                        " of the plug-in interface, this program has version " +
                        std::to_string(GORBEX_PLUGIN_ABI));
}

void RequireWholeTables(const GorbexClass& table, const std::string& shownName) {
  const bool isWhole =
      table.size >= sizeof(GorbexClass) && table.create != nullptr && table.destroy != nullptr;
  if (!isWhole) Refuse(shownName, "hands out an incomplete class");
  if (table.control == nullptr) return;
  const GorbexControl& control = *table.control;
  if (control.size < sizeof(GorbexControl) || control.set_size == nullptr ||
      control.paint == nullptr) {
    Refuse(shownName, "hands out an incomplete user control");
  }
}

}  // namespace

PluginClass LoadPluginClass(const std::string& hostPath, const std::string& shownName,
                            const std::string& clsid) {
  RequireSharedLibrary(hostPath, shownName);
  PluginClass loaded;
  loaded.library = Load(hostPath, shownName);
  const auto entry =
      reinterpret_cast<decltype(&gorbex_plugin_class)>(dlsym(loaded.library.get(), kEntryPoint));
  if (entry == nullptr) {
    Refuse(shownName, std::string("is not a plug-in: it has no function ") + kEntryPoint);
  }
  const GorbexClass* table = entry(GORBEX_PLUGIN_ABI, clsid.c_str());
  if (table == nullptr) Refuse(shownName, "does not know the class " + clsid);
  RequireVersion(*table, shownName);
  RequireWholeTables(*table, shownName);
  loaded.calls = *table;
  if (table->control != nullptr) loaded.control = *table->control;
  return loaded;
}

}  // namespace gorbex
