#include "tests/support/fixed_inspector.h"

#include "platform/code_page.h"

namespace gorbex::test {

void FixedInspector::Set(const std::string& componentFile, const std::string& guid) {
  guids_[LowerCase(componentFile)] = guid;
}

std::string FixedInspector::InterfaceGuid(const std::string& componentFile,
                                          const std::string& defaultText) const {
  const auto found = guids_.find(LowerCase(componentFile));
  return found == guids_.end() ? defaultText : found->second;
}

}  // namespace gorbex::test
