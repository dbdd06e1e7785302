#pragma once

#include "platform/component/library_inspector.h"

namespace gorbex {

/// Reads type libraries with the system's own loader.
class WindowsComponentInspector : public LibraryInspector {
 public:
  using LibraryInspector::LibraryInspector;

 protected:
  [[nodiscard]] std::optional<TypeLibrary> Read(const std::string& componentFile) const override;
};

}  // namespace gorbex
