#include "compiler/registration.h"

#include <string_view>

#include "compiler/windows_path.h"

namespace gorbex::standin {
namespace {

constexpr std::string_view kCompilerKey = "VisualBasic.Project\\shell\\open\\command";
constexpr std::string_view kSystemLibrary = "{00020430-0000-0000-C000-000000000046}";

std::string VersionKey(const std::string& guid, const std::string& version) {
  return "TypeLib\\" + guid + "\\" + version;
}

bool SetText(Registry& registry, const std::string& key, const std::string& text) {
  const RegistryValue value{RegistryType::Text, text + '\0'};
  return registry.SetValue(RegistryRoot::ClassesRoot, key, "", value);
}

void MakeFolders(FileSystem& files, const std::string& folder) {
  if (folder.size() <= 3 || FolderExists(files, folder)) return;
  MakeFolders(files, FolderOf(folder));
  files.CreateFolder(folder);
}

bool InstallSystemLibrary(FileSystem& files, Registry& registry) {
  const LibraryEntry entry{std::string(kSystemLibrary), "2.0", "OLE Automation",
                           "C:\\Windows\\System32\\stdole2.tlb"};
  const auto registered = RegisteredFile(registry, entry.guid, entry.version);
  if (registered && FileExists(files, *registered)) return true;
  if (!FileExists(files, entry.file)) {
    MakeFolders(files, FolderOf(entry.file));
    files.Write(entry.file, "Stands for the system's OLE Automation library.\r\n");
  }
  return RegisterLibrary(registry, entry);
}

}  // namespace

std::optional<std::string> RegisteredFile(const RegistryReader& registry, const std::string& guid,
                                          const std::string& version) {
  auto value =
      registry.Value(RegistryRoot::ClassesRoot, VersionKey(guid, version) + "\\0\\win32", "");
  if (!value || value->type != RegistryType::Text) return std::nullopt;
  value->bytes.resize(std::string_view(value->bytes).substr(0, value->bytes.find('\0')).size());
  if (value->bytes.empty()) return std::nullopt;
  return value->bytes;
}

bool RegisterLibrary(Registry& registry, const LibraryEntry& entry) {
  const auto key = VersionKey(entry.guid, entry.version);
  return SetText(registry, key, entry.title) && SetText(registry, key + "\\0\\win32", entry.file) &&
         SetText(registry, key + "\\FLAGS", "0") &&
         SetText(registry, key + "\\HELPDIR", FolderOf(entry.file));
}

bool Install(FileSystem& files, Registry& registry, const std::string& program) {
  return SetText(registry, std::string(kCompilerKey), "\"" + program + "\" \"%1\"") &&
         InstallSystemLibrary(files, registry);
}

}  // namespace gorbex::standin
