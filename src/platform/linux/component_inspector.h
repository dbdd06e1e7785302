#pragma once

#include "platform/component_inspector.h"

namespace gorbex {

/// Type libraries are not read yet: every component file answers the default text.
class LinuxComponentInspector : public ComponentInspector {
 public:
  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override;
};

}  // namespace gorbex
