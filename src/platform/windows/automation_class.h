#pragma once

#include <windows.h>

#include <objbase.h>

#include <string>

#include "platform/windows/com_pointer.h"
#include "platform/windows/dispatch.h"

namespace gorbex {

// Classes of registered components, by their programmatic identifiers. Error 429, which names the
// identifier and the reason, when there is no such class or it makes no object.

[[noreturn]] void RefuseObject(const std::string& identifier, const std::string& reason);
[[nodiscard]] CLSID ClassOf(const std::string& identifier);
[[nodiscard]] bool IsRegistered(const std::string& identifier);
[[nodiscard]] Dispatch MakeObject(const std::string& identifier);

/// Makes a control, which is used by late binding as any object.
[[nodiscard]] ComPointer<IDispatch> MakeControl(const std::string& identifier);

}  // namespace gorbex
