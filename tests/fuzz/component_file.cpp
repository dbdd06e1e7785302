#include "platform/component/library_file.h"

#include <algorithm>
#include <cctype>

#include "platform/component/component_keys.h"
#include "platform/component/library_inspector.h"
#include "platform/component/pe_image.h"
#include "tests/fuzz/target.h"
#include "tests/support/memory_file_system.h"
#include "tests/support/memory_registry.h"

namespace gorbex::test {
namespace {

const std::string kPath = "C:\\Group\\Core.dll";

bool IsGuid(const std::string& text) {
  constexpr std::string_view kLayout = "{________-____-____-____-____________}";
  if (text.size() != kLayout.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isDigit = std::isxdigit(static_cast<unsigned char>(text[i])) != 0;
    if (kLayout[i] == '_' ? !isDigit : text[i] != kLayout[i]) return false;
  }
  return true;
}

void RequireSound(const TypeLibrary& library, std::size_t fileSize) {
  constexpr std::size_t kTypeSize = 100;
  Require(library.types.size() <= fileSize / kTypeSize, "every type has its bytes");
  Require(library.name.size() <= fileSize, "a name is a part of the file");
  Require(library.helpString.size() <= fileSize, "a help string is a part of the file");
  Require(library.guid.empty() || IsGuid(library.guid), "a library's identity is one");
  for (const auto& type : library.types) {
    Require(type.guid.empty() || IsGuid(type.guid), "a type's identity is one");
    Require(!type.defaultInterface || *type.defaultInterface < library.types.size(),
            "a default interface is a type of the library");
  }
}

// The registrar refuses a class whose name leads elsewhere.
bool HasPlainNames(const ComponentKeys& keys) {
  return keys.library.name.find('\\') == std::string::npos &&
         std::none_of(keys.classes.begin(), keys.classes.end(),
                      [](const auto& entry) { return entry.name.find('\\') != std::string::npos; });
}

void RequireRegistered(const TypeLibrary& library) {
  Journal journal;
  MemoryRegistry registry(journal);
  const auto keys = KeysOf(library, kPath);
  Require(WriteComponentKeys(registry, keys), "a library can be registered");
  if (!HasPlainNames(keys)) return;
  const auto own = OwnKeysOf(keys);
  for (const auto& line : journal) {
    const auto isIn = [&](const std::string& key) {
      return line.starts_with("registry HKEY_CLASSES_ROOT\\" + key);
    };
    Require(std::any_of(own.begin(), own.end(), isIn),
            "what registering writes unregistering removes");
  }
}

}  // namespace

// A component: a type library, or a program that holds some.
void ReadInput(std::string_view input) {
  for (const auto number : {std::uint16_t{1}, std::uint16_t{2}}) {
    const auto resource = FindLibraryResource(input, number);
    Require(!resource || (resource->data() >= input.data() &&
                          resource->data() + resource->size() <= input.data() + input.size()),
            "a resource is a part of the file");
  }
  Journal journal;
  MemoryFileSystem files(journal);
  files.AddFile(kPath, std::string(input));
  const auto library = TypeLibraryOf(files, kPath);
  if (!library) return;
  RequireSound(*library, input.size());
  const auto interface = OwnInterfaceOf(*library);
  Require(interface.empty() || IsGuid(interface), "an interface's identity is one");
  RequireRegistered(*library);
}

}  // namespace gorbex::test
