#pragma once

#include <map>
#include <string>

#include "platform/component_inspector.h"

namespace gorbex::test {

/// Component files with the interface GUIDs a test gave them; letter case does not matter.
class FixedInspector : public ComponentInspector {
 public:
  void Set(const std::string& componentFile, const std::string& guid);

  [[nodiscard]] std::string InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const override;

 private:
  std::map<std::string, std::string> guids_;
};

}  // namespace gorbex::test
