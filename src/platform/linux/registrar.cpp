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
  return isPlain(keys.name) &&
         std::all_of(keys.classes.begin(), keys.classes.end(),
                     [&](const ComponentKeys::Class& entry) { return isPlain(entry.name); });
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
  return unregisters ? Unregister(files.front()) : Register(files.front());
}

Registrar::Outcome Registrar::Register(const std::string& componentFile) {
  if (!FileExists(files_, componentFile)) return Outcome::NotLoaded;
  const auto library = TypeLibraryOf(files_, componentFile);
  if (!library) return Outcome::NoEntryPoint;
  const ComponentKeys keys = KeysOf(*library, componentFile);
  if (!HasPlainNames(keys)) return Outcome::Failed;
  return WriteComponentKeys(registry_, keys) ? Outcome::Done : Outcome::Failed;
}

Registrar::Outcome Registrar::Unregister(const std::string& componentFile) {
  if (!FileExists(files_, componentFile)) return Outcome::NotLoaded;
  const auto library = TypeLibraryOf(files_, componentFile);
  if (!library) return Outcome::NoEntryPoint;
  const ComponentKeys keys = KeysOf(*library, componentFile);
  if (!HasPlainNames(keys)) return Outcome::Failed;
  bool done = registry_.RemoveKeys(RegistryRoot::ClassesRoot, OwnKeysOf(keys));
  // Other versions of the library are other components.
  const std::string top = "TypeLib\\" + keys.library;
  if (!registry_.HasSubKeys(RegistryRoot::ClassesRoot, top)) {
    done = registry_.RemoveKeys(RegistryRoot::ClassesRoot, {top}) && done;
  }
  return done ? Outcome::Done : Outcome::Failed;
}

}  // namespace gorbex
