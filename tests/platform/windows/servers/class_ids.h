#pragma once

#include <windows.h>

namespace gorbex::test {

/// A class that the tests' servers replace, and the name of its objects in the tests' files.
struct ServerOf {
  const wchar_t* identifier;
  const char* name;
  bool isLicensed = false;
};

inline constexpr ServerOf kServers[] = {{L"SourceSafe", "VSSDatabase"},
                                        {L"Outlook.Application.8", "Application"},
                                        {L"GorbexTest.Free", "Component"},
                                        {L"GorbexTest.Licensed", "Component", true}};

inline GUID ServerClass(unsigned long number) {
  return {0x6B1D0F10 + number, 0x3C5A, 0x4E77, {0x9A, 0x21, 0x5E, 0x0C, 0x7D, 0x44, 0x18, 0xB2}};
}

}  // namespace gorbex::test
