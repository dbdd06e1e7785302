#include "platform/linux/component_inspector.h"

namespace gorbex {

std::string LinuxComponentInspector::InterfaceGuid(const std::string& /*componentFile*/,
                                                   const std::string& defaultText) const {
  return defaultText;
}

}  // namespace gorbex
