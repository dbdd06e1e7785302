// A built program. It runs and ends; as a component it makes itself known to the machine, as the
// registration tool is not used for programs.
#include <windows.h>

#include "compiler/windows/server/own_component.h"

int WINAPI wWinMain(HINSTANCE /*module*/, HINSTANCE /*previous*/, wchar_t* arguments,
                    int /*show*/) {
  using namespace gorbex::standin;
  const auto isTask = [&](const wchar_t* task) {
    return CompareStringOrdinal(arguments + 1, -1, task, -1, TRUE) == CSTR_EQUAL &&
           (*arguments == L'/' || *arguments == L'-');
  };
  if (*arguments == 0) return 0;
  if (isTask(L"RegServer")) return SUCCEEDED(RegisterComponent()) ? 0 : 1;
  if (isTask(L"UnregServer")) return SUCCEEDED(UnregisterComponent()) ? 0 : 1;
  return 0;
}
