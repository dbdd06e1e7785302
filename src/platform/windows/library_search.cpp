#include "platform/windows/library_search.h"

#include <windows.h>

#include "platform/windows/child_process.h"

namespace gorbex {
namespace {

// A Windows 7 without updates has neither: asked for by name, they do not keep the program from
// starting there.
template <class Function>
Function* SystemFunction(const char* name) {
  const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(kernel, name)));
}

}  // namespace

// Components that are tested may ask for libraries of the search path.
void SearchTrustedFoldersAlone() {
  constexpr DWORD kSystem = 0x800;     // LOAD_LIBRARY_SEARCH_SYSTEM32
  constexpr DWORD kAddedOnes = 0x400;  // LOAD_LIBRARY_SEARCH_USER_DIRS
  auto* const choose = SystemFunction<BOOL WINAPI(DWORD)>("SetDefaultDllDirectories");
  auto* const add = SystemFunction<void * WINAPI(const wchar_t*)>("AddDllDirectory");
  if (choose == nullptr || add == nullptr || choose(kSystem | kAddedOnes) == 0) return;
  for (const auto& folder : FoldersOfPath()) add(folder.c_str());
}

}  // namespace gorbex
