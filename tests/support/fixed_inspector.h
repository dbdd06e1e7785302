#pragma once

#include <map>
#include <string>

#include "platform/component_inspector.h"

namespace gorbex::test {

/// Component files with the interface GUIDs a test gave them.
struct FixedInspector : ComponentInspector {
  std::map<std::string, std::string> guids;

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override {
    const auto found = guids.find(componentFile);
    return found == guids.end() ? defaultText : found->second;
  }
};

}  // namespace gorbex::test
