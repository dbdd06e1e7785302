#include "platform/linux/component_inspector.h"

#include "platform/component/library_file.h"
#include "platform/component/own_interface.h"

namespace gorbex {

std::string LinuxComponentInspector::InterfaceGuid(const std::string& componentFile,
                                                   const std::string& defaultText) const {
  const auto library = TypeLibraryOf(files_, componentFile);
  const auto guid = library ? OwnInterfaceOf(*library) : std::string();
  return guid.empty() ? defaultText : guid;
}

}  // namespace gorbex
