#pragma once

#include <windows.h>

#include <oleauto.h>

#include <string>

#include "platform/component/component_keys.h"
#include "platform/windows/com_pointer.h"

namespace gorbex::standin {

// The component whose file contains this code. Its type library, a resource that the compiler put
// into a copy of the file, is all that tells one component from another.

/// The full path of the component's file.
[[nodiscard]] std::wstring ComponentFile();

/// Null when the file has no type library that the system can load.
[[nodiscard]] ComPointer<ITypeLib> ComponentLibrary();

/// Makes the component known to the machine, or takes that back.
[[nodiscard]] HRESULT RegisterComponent();
[[nodiscard]] HRESULT UnregisterComponent();

}  // namespace gorbex::standin
