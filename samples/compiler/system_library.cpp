#include "compiler/system_library.h"

namespace gorbex::standin {

TypeLibrary SystemLibrary() {
  const auto interface = [](std::string_view guid, const char* name) {
    return TypeInfo{TypeKind::Interface, std::string(guid), name, type_flag::kHidden, std::nullopt};
  };
  TypeLibrary library;
  library.guid = kSystemLibrary;
  library.major = 2;
  library.name = "stdole";
  library.helpString = "OLE Automation";
  library.types = {interface(kUnknownInterface, "IUnknown"),
                   interface(kDispatchInterface, "IDispatch")};
  return library;
}

}  // namespace gorbex::standin
