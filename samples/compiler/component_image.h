#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace gorbex::standin {

enum class ImageKind { Program, Library };

/// What a built file says about itself.
struct ComponentFacts {
  std::string project;
  std::string version;         ///< the project's: major.minor.revision
  std::string library;         ///< the type library's identity; empty for a plain program
  std::string libraryVersion;  ///< major.minor in hexadecimal
};

/// A loadable 32-bit image that carries the facts as readable text and does nothing when run.
[[nodiscard]] std::string ComponentImage(ImageKind kind, const ComponentFacts& facts);

/// The facts of a file that ComponentImage made and that has a library; nothing for any other file.
[[nodiscard]] std::optional<ComponentFacts> ReadComponent(std::string_view image);

}  // namespace gorbex::standin
