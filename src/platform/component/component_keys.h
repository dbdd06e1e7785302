#pragma once

#include <string>
#include <vector>

#include "platform/component/type_library.h"
#include "platform/registry.h"

namespace gorbex {

/// The registry entries of a component. Identities are in braces.
struct ComponentKeys {
  struct Class {
    std::string name;
    std::string clsid;
    std::string iid;  ///< of its default interface; empty when that is not in this library
    std::string interfaceName;
  };

  TypeLibrary library;
  std::string path;
  std::vector<Class> classes;
  bool inProcess = true;
};

/// The keys of a component whose type library is in the file with that path.
[[nodiscard]] ComponentKeys KeysOf(const TypeLibrary& library, const std::string& path);

/// The keys below HKEY_CLASSES_ROOT that hold nothing but the component. The library's topmost key
/// is not one of them: it may hold other versions.
[[nodiscard]] std::vector<std::string> OwnKeysOf(const ComponentKeys& keys);

/// Makes the library, its interfaces and its classes known to the machine, as the component's own
/// registration would. True when every value could be written.
[[nodiscard]] bool WriteComponentKeys(Registry& registry, const ComponentKeys& keys);

}  // namespace gorbex
