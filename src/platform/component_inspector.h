#pragma once

#include <string>

namespace gorbex {

/// Reads the type information of built components.
class ComponentInspector {
 public:
  virtual ~ComponentInspector() = default;

  /// The GUID (braces included) of an interface that the component file defines; the default text
  /// when the file has no readable type information.
  [[nodiscard]] virtual std::string InterfaceGuid(const std::string& componentFile,
                                                  const std::string& defaultText) const = 0;
};

}  // namespace gorbex
