#pragma once

#include <windows.h>

#include <objbase.h>

#include <array>
#include <filesystem>
#include <iterator>
#include <string>

#include "servers/class_ids.h"
#include "tests/platform/temporary_folder.h"
#include "variable.h"

namespace gorbex::test {

/// The tests' automation servers under the names that the program asks for, over a folder of their
/// own, as long as this object exists.
class AutomationServers {
 public:
  TemporaryFolder root;

  AutomationServers() {
    for (unsigned long i = 0; i < std::size(kServerNames); ++i) {
      std::array<wchar_t, 40> id{};
      StringFromGUID2(ServerClass(i), id.data(), static_cast<int>(id.size()));
      const std::wstring key = kServerNames[i];
      Set(key + L"\\CLSID", nullptr, id.data());
      const auto server = L"CLSID\\" + std::wstring(id.data()) + L"\\InprocServer32";
      Set(server, nullptr, std::filesystem::path(AUTOMATION_SERVERS).make_preferred().native());
      Set(server, L"ThreadingModel", L"Apartment");
    }
  }
  ~AutomationServers() {
    for (const wchar_t* name : kServerNames) Remove(name);
  }

  /// Lets a call fail from now on.
  void Fail(const std::string& call, const std::string& number, const std::string& words) const {
    root.Put("failures", call + "|" + number + "|" + words + "\n");
  }
  void FailNoMore() const { root.Put("failures", ""); }

  /// What the servers were asked since the last time.
  std::string Journal() const {
    auto calls = root.Get("journal");
    root.Put("journal", "");
    return calls;
  }

  static void Remove(const std::wstring& key) { RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str()); }

 private:
  static void Set(const std::wstring& key, const wchar_t* name, const std::wstring& text) {
    RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(),
                    static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
  }

  Variable folder_{"GORBEX_TEST_SERVERS", WindowsPath(root.Path())};
};

}  // namespace gorbex::test
