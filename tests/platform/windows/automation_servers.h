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

  /// What they answer, in lines as ScriptedObject reads them.
  explicit AutomationServers(const std::string& answers) {
    root.Put("answers", answers);
    for (unsigned long i = 0; i < std::size(kServers); ++i) {
      std::array<wchar_t, 40> id{};
      StringFromGUID2(ServerClass(i), id.data(), static_cast<int>(id.size()));
      Set(kServers[i].identifier + std::wstring(L"\\CLSID"), nullptr, id.data());
      const auto server = L"CLSID\\" + std::wstring(id.data()) + L"\\InprocServer32";
      Set(server, nullptr, std::filesystem::path(AUTOMATION_SERVERS).make_preferred().native());
      Set(server, L"ThreadingModel", L"Apartment");
    }
  }
  ~AutomationServers() {
    for (const auto& server : kServers) Remove(server.identifier);
  }

  /// Changes the answer to a call from now on.
  void Answer(const std::string& call, const std::string& answer) const {
    root.Put("answers", root.Get("answers") + "\n" + call + "=" + answer);
  }

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
