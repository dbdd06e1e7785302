#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

/// The type library inside a component file: the part that the compiler of another project sees.
struct InnerLibrary {
  std::string_view bytes;  ///< a part of the file's
  std::string guid;        ///< in braces
  std::string version;     ///< as the registry writes it: hexadecimal
};

/// Reads the type information of built components.
class ComponentInspector {
 public:
  virtual ~ComponentInspector() = default;

  /// The GUID (braces included) of an interface that the component file defines; the default text
  /// when the file has no readable type information.
  [[nodiscard]] virtual std::string InterfaceGuid(const std::string& componentFile,
                                                  const std::string& defaultText) const = 0;

  /// The type library in the bytes of a component file; nothing when there is none that can be
  /// read.
  [[nodiscard]] virtual std::optional<InnerLibrary> LibraryIn(std::string_view file) const = 0;
};

}  // namespace gorbex
