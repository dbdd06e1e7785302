#include "platform/component/component_keys.h"

#include <string_view>

#include "platform/code_page.h"
#include "platform/plain_text.h"

namespace gorbex {
namespace {

// The system's own proxy, which carries calls by what the type library says.
constexpr std::string_view kLibraryProxy = "{00020424-0000-0000-C000-000000000046}";

/// Gathers the text values below HKEY_CLASSES_ROOT that make up a component.
class KeyWriter {
 public:
  void Set(const std::string& key, std::string_view text, std::string_view name = {}) {
    entries_.push_back({key, std::string(name), {RegistryType::Text, std::string(text) + '\0'}});
  }

  [[nodiscard]] bool WriteTo(Registry& registry) const {
    return registry.SetValues(RegistryRoot::ClassesRoot, entries_);
  }

 private:
  std::vector<RegistryEntry> entries_;
};

std::string VersionKey(const TypeLibrary& library) {
  return "TypeLib\\" + library.guid + "\\" + RegistryVersionOf(library);
}

void WriteLibrary(KeyWriter& to, const ComponentKeys& keys) {
  const auto& library = keys.library;
  const auto key = VersionKey(library);
  const auto folderEnd = keys.path.rfind('\\');
  to.Set(key, library.helpString.empty() ? library.name : library.helpString);
  to.Set(key + "\\" + Hexadecimal(library.lcid) + "\\win32", keys.path);
  to.Set(key + "\\FLAGS", std::to_string(library.flags));
  to.Set(key + "\\HELPDIR", folderEnd == std::string::npos ? "" : keys.path.substr(0, folderEnd));
}

void WriteInterface(KeyWriter& to, const ComponentKeys& keys, const ComponentKeys::Class& entry) {
  const auto key = "Interface\\" + entry.iid;
  to.Set(key, entry.interfaceName);
  to.Set(key + "\\ProxyStubClsid32", kLibraryProxy);
  to.Set(key + "\\TypeLib", keys.library.guid);
  to.Set(key + "\\TypeLib", RegistryVersionOf(keys.library), "Version");
}

void WriteClass(KeyWriter& to, const ComponentKeys& keys, const ComponentKeys::Class& entry) {
  const auto programName = keys.library.name + "." + entry.name;
  const auto key = "CLSID\\" + entry.clsid;
  const auto server = key + (keys.inProcess ? "\\InprocServer32" : "\\LocalServer32");
  to.Set(key, programName);
  to.Set(server, keys.path);
  if (keys.inProcess) to.Set(server, "Apartment", "ThreadingModel");
  to.Set(key + "\\ProgID", programName);
  to.Set(key + "\\Programmable", "");
  to.Set(key + "\\TypeLib", keys.library.guid);
  to.Set(key + "\\VERSION", RegistryVersionOf(keys.library));
  to.Set(programName, programName);
  to.Set(programName + "\\Clsid", entry.clsid);
}

}  // namespace

ComponentKeys KeysOf(const TypeLibrary& library, const std::string& path) {
  ComponentKeys keys{library, path, {}, !LowerCase(path).ends_with(".exe")};
  for (const auto& type : library.types) {
    if (type.kind != TypeKind::Coclass || type.guid.empty()) continue;
    ComponentKeys::Class entry{type.name, type.guid, "", ""};
    if (type.defaultInterface) {
      const auto& interface = library.types.at(*type.defaultInterface);
      entry.iid = interface.guid;
      entry.interfaceName = interface.name;
    }
    keys.classes.push_back(entry);
  }
  return keys;
}

std::vector<std::string> OwnKeysOf(const ComponentKeys& keys) {
  std::vector<std::string> own = {VersionKey(keys.library)};
  for (const auto& each : keys.classes) {
    own.push_back("CLSID\\" + each.clsid);
    own.push_back(keys.library.name + "." + each.name);
    if (!each.iid.empty()) own.push_back("Interface\\" + each.iid);
  }
  return own;
}

bool WriteComponentKeys(Registry& registry, const ComponentKeys& keys) {
  KeyWriter to;
  WriteLibrary(to, keys);
  for (const auto& entry : keys.classes) {
    if (!entry.iid.empty()) WriteInterface(to, keys, entry);
    WriteClass(to, keys, entry);
  }
  return to.WriteTo(registry);
}

}  // namespace gorbex
