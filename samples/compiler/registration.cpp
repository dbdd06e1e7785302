#include "compiler/registration.h"

#include <string_view>

#include "compiler/system_library.h"
#include "compiler/type_library_image.h"
#include "platform/component/component_keys.h"
#include "platform/windows_path.h"

namespace gorbex::standin {
namespace {

constexpr std::string_view kCompilerKey = "VisualBasic.Project\\shell\\open\\command";

bool SetText(Registry& registry, const std::string& key, const std::string& text) {
  const RegistryValue value{RegistryType::Text, text + '\0'};
  return registry.SetValue(RegistryRoot::ClassesRoot, key, "", value);
}

void MakeFolders(FileSystem& files, const std::string& folder) {
  if (folder.size() <= 3 || FolderExists(files, folder)) return;
  MakeFolders(files, ResolvedPath(folder, ".."));
  files.CreateFolder(folder);
}

bool InstallSystemLibrary(FileSystem& files, Registry& registry) {
  const std::string file = "C:\\Windows\\System32\\stdole2.tlb";
  const auto library = SystemLibrary();
  const auto registered = RegisteredFile(registry, library.guid, RegistryVersionOf(library));
  if (registered && FileExists(files, *registered)) return true;
  if (!FileExists(files, file)) {
    MakeFolders(files, ResolvedPath(file, ".."));
    files.Write(file, TypeLibraryImage(library));
  }
  return WriteComponentKeys(registry, KeysOf(library, file));
}

}  // namespace

std::optional<std::string> RegisteredFile(const RegistryReader& registry, const std::string& guid,
                                          const std::string& version) {
  auto value = registry.Value(RegistryRoot::ClassesRoot,
                              "TypeLib\\" + guid + "\\" + version + "\\0\\win32", "");
  if (!value || value->type != RegistryType::Text) return std::nullopt;
  value->bytes.resize(std::string_view(value->bytes).substr(0, value->bytes.find('\0')).size());
  if (value->bytes.empty()) return std::nullopt;
  return value->bytes;
}

bool Install(FileSystem& files, Registry& registry, const std::string& program) {
  return SetText(registry, std::string(kCompilerKey), "\"" + program + "\" \"%1\"") &&
         InstallSystemLibrary(files, registry);
}

}  // namespace gorbex::standin
