#include "compiler/references.h"

#include "compiler/identity.h"
#include "compiler/registration.h"
#include "platform/code_page.h"
#include "platform/component/library_file.h"
#include "platform/plain_text.h"
#include "platform/windows_path.h"

namespace gorbex::standin {
namespace {

/// A type library as a project names it.
struct LibraryReference {
  std::string guid;
  std::string version;  ///< as the registry writes it: hexadecimal
  std::string file;
};

std::optional<std::string> RegistryVersion(std::string_view text, int base) {
  const auto dot = text.find('.');
  if (dot == std::string_view::npos) return std::nullopt;
  const auto major = WholeNumber<std::uint16_t>(text.substr(0, dot), base);
  const auto minor = WholeNumber<std::uint16_t>(text.substr(dot + 1), base);
  if (!major || !minor) return std::nullopt;
  return Hexadecimal(*major) + "." + Hexadecimal(*minor);
}

std::optional<LibraryReference> Reference(std::string_view guid, std::string_view version, int base,
                                          std::string_view file) {
  const auto registered = RegistryVersion(version, base);
  if (!ParsedUuid(guid) || !registered || file.empty()) return std::nullopt;
  return LibraryReference{std::string(guid), *registered, std::string(file)};
}

// `*\G{GUID}#2e.0#0#path#description`; nothing when a field is missing or malformed.
std::optional<LibraryReference> ParseReference(std::string_view value) {
  const auto fields = Split(value, '#');
  if (fields.size() < 4 || !EqualsIgnoringCase(fields[0].substr(0, 3), "*\\G")) return std::nullopt;
  return Reference(fields[0].substr(3), fields[1], 16, fields[3]);
}

// `{GUID}#2.0#0; FILE.OCX`, whose version is decimal.
std::optional<LibraryReference> ParseObject(std::string_view value) {
  const auto fields = Split(value, '#');
  if (fields.size() < 3) return std::nullopt;
  const auto mark = fields[2].find(';');
  if (mark == std::string_view::npos) return std::nullopt;
  return Reference(fields[0], fields[1], 10, Trimmed(fields[2].substr(mark + 1)));
}

// A reference to another project of the group: "*\APath.vbp".
std::optional<std::string_view> ProjectReference(std::string_view value) {
  if (!EqualsIgnoringCase(value.substr(0, 3), "*\\A")) return std::nullopt;
  return value.substr(3);
}

std::optional<LibraryReference> Named(const ProjectItem& item) {
  return item.kind == ProjectItem::Kind::Object ? ParseObject(item.value)
                                                : ParseReference(item.value);
}

std::optional<Fault> CheckRegistered(const FileReader& files, const RegistryReader& registry,
                                     const Project& project, const LibraryReference& library) {
  const auto registered = RegisteredFile(registry, library.guid, library.version);
  if (registered && FileExists(files, PlaceOfLibrary(files, *registered).file)) return std::nullopt;
  return CouldNotBeLoaded(registered.value_or(ResolvedPath(project.folder, library.file)));
}

}  // namespace

std::optional<std::string> RegisteredFileOf(const RegistryReader& registry,
                                            const ProjectItem& item) {
  const auto library = Named(item);
  return library ? RegisteredFile(registry, library->guid, library->version) : std::nullopt;
}

std::optional<TypeLibrary> LibraryOf(const FileReader& files, const RegistryReader& registry,
                                     const ProjectItem& item) {
  const auto file = RegisteredFileOf(registry, item);
  return file ? TypeLibraryOf(files, *file) : std::nullopt;
}

std::optional<Fault> CheckReference(const FileReader& files, const RegistryReader& registry,
                                    const Project& project, const ProjectItem& item) {
  if (const auto other = ProjectReference(item.value)) {
    const auto path = ResolvedPath(project.folder, *other);
    return FileExists(files, path) ? std::nullopt : std::optional(FileNotFound(path));
  }
  const auto library = Named(item);
  if (!library) return NotAReference(item.value);
  return CheckRegistered(files, registry, project, *library);
}

}  // namespace gorbex::standin
