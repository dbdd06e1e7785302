#pragma once

#include <string>

namespace gorbex::test {

/// Starts a program with one argument that goes on by itself and keeps this one's streams open.
void StartAndLeave(const std::string& program, const std::string& argument);

}  // namespace gorbex::test
