#include "platform/component/library_file.h"

#include <exception>

#include "platform/component/pe_image.h"
#include "platform/plain_text.h"

namespace gorbex {

LibraryPlace PlaceOfLibrary(const FileReader& files, const std::string& path) {
  const auto separator = path.find_last_of("\\/");
  if (separator == std::string::npos || FileExists(files, path)) return {path};
  const auto number = WholeNumber<std::uint16_t>(std::string_view(path).substr(separator + 1));
  return number ? LibraryPlace{path.substr(0, separator), number} : LibraryPlace{path};
}

std::optional<InnerLibrary> InnerLibraryOf(std::string_view file) {
  try {
    const auto bytes = file.starts_with("MSFT") ? file : FindLibraryResource(file);
    if (!bytes) return std::nullopt;
    const auto library = ReadTypeLibrary(*bytes);
    if (!library) return std::nullopt;
    return InnerLibrary{*bytes, library->guid, RegistryVersionOf(*library)};
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::optional<TypeLibrary> TypeLibraryOf(const FileReader& files,
                                         const std::string& componentFile) {
  try {
    const auto place = PlaceOfLibrary(files, componentFile);
    const auto bytes = files.Read(place.file);
    if (!place.resource) {
      if (auto library = ReadTypeLibrary(bytes)) return library;
    }
    const auto resource = FindLibraryResource(bytes, place.resource);
    return resource ? ReadTypeLibrary(*resource) : std::nullopt;
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace gorbex
