#pragma once

#include <windows.h>

namespace gorbex::test {

// The classes that the tests' servers stand for, numbered.

inline constexpr const wchar_t* kServerNames[] = {L"SourceSafe", L"Outlook.Application.8",
                                                  L"GorbexTest.Free", L"GorbexTest.Licensed"};
inline constexpr unsigned long kLicensedClass = 3;

inline GUID ServerClass(unsigned long number) {
  return {0x6B1D0F10 + number, 0x3C5A, 0x4E77, {0x9A, 0x21, 0x5E, 0x0C, 0x7D, 0x44, 0x18, 0xB2}};
}

}  // namespace gorbex::test
