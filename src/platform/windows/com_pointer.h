#pragma once

#include <wrl/client.h>

namespace gorbex {

/// Owns a reference to an object of the component system.
template <class Interface>
using ComPointer = Microsoft::WRL::ComPtr<Interface>;

}  // namespace gorbex
