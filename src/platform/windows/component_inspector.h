#pragma once

#include "platform/component/library_file.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// Reads type libraries with the system's own loader.
class WindowsComponentInspector : public ComponentInspector {
 public:
  explicit WindowsComponentInspector(const FileReader& files) : files_(files) {}

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override;
  [[nodiscard]] std::optional<InnerLibrary> LibraryIn(std::string_view file) const override {
    return InnerLibraryOf(file);
  }

 private:
  const FileReader& files_;
};

}  // namespace gorbex
