#pragma once

#include <windows.h>

#include <oaidl.h>

#include <string>

namespace gorbex {

// Properties of automation objects, found by name when they are used. Errors: 438 no such property,
// 383 a read-only one, 13 a text that is no value of it (or a value that is no text), 440 for what
// else befell the object, in its own words where it has some.

void LetProperty(IDispatch& object, const std::string& property, const std::string& value);
[[nodiscard]] std::string PropertyText(IDispatch& object, const std::string& property);

}  // namespace gorbex
