#include "platform/linux/registrar.h"

#include <algorithm>
#include <vector>

#include "platform/code_page.h"
#include "platform/command_line.h"
#include "platform/component/component_keys.h"
#include "platform/component/library_file.h"

namespace gorbex {
namespace {

bool IsOption(std::string_view argument, char letter) {
  return argument.size() == 2 && (argument[0] == '/' || argument[0] == '-') &&
         LowerCase(argument[1]) == letter;
}

// A name with a separator would lead to keys that are not the component's own.
bool HasPlainNames(const ComponentKeys& keys) {
  const auto isPlain = [](const std::string& name) {
    return !name.empty() && name.find('\\') == std::string::npos;
  };
  return isPlain(keys.library.name) &&
         std::all_of(keys.classes.begin(), keys.classes.end(),
                     [&](const ComponentKeys::Class& entry) { return isPlain(entry.name); });
}

// Harmless when the component is not registered.
bool Remove(LinuxRegistry& registry, const ComponentKeys& keys) {
  const bool done = registry.RemoveKeys(RegistryRoot::ClassesRoot, OwnKeysOf(keys));
  // Other versions of the library are other components.
  const std::string top = "TypeLib\\" + keys.library.guid;
  if (registry.HasSubKeys(RegistryRoot::ClassesRoot, top)) return done;
  return registry.RemoveKeys(RegistryRoot::ClassesRoot, {top}) && done;
}

}  // namespace

Registrar::Outcome Registrar::Run(std::string_view arguments) {
  std::vector<std::string> files;
  bool unregisters = false;
  for (const std::string& argument : SplitArguments(arguments)) {
    if (IsOption(argument, 'u')) {
      unregisters = true;
    } else if (!IsOption(argument, 's')) {
      files.push_back(argument);
    }
  }
  if (files.size() != 1) return Outcome::BadArguments;
  if (!FileExists(files_, files.front())) return Outcome::NotLoaded;
  const auto library = TypeLibraryOf(files_, files.front());
  if (!library) return Outcome::NoEntryPoint;
  const ComponentKeys keys = KeysOf(*library, files.front());
  if (!HasPlainNames(keys)) return Outcome::Failed;
  const bool done = unregisters ? Remove(registry_, keys) : WriteComponentKeys(registry_, keys);
  return done ? Outcome::Done : Outcome::Failed;
}

}  // namespace gorbex
