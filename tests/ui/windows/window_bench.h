#pragma once

#include <windows.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "platform/windows/host.h"
#include "platform/windows/wide_text.h"
#include "tests/platform/temporary_folder.h"

namespace gorbex::test {

/// The system's real services, with settings and a program folder of the test's own and the sample
/// product at C:\Storefront. Components are registered for the whole system.
class WindowBench {
 public:
  WindowBench() {
    if (exists(Product())) throw std::runtime_error("C:\\Storefront is there already");
    std::filesystem::copy(STOREFRONT, Product(), std::filesystem::copy_options::recursive);
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
    RegCreateKeyExW(HKEY_CURRENT_USER, kSettings, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &settings_, nullptr);
    RegOverridePredefKey(HKEY_CURRENT_USER, settings_);
  }

  ~WindowBench() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(settings_);
    RegDeleteTreeW(HKEY_CURRENT_USER, kSettings);
    std::error_code ignored;
    std::filesystem::remove_all(Product(), ignored);
  }
  WindowBench(const WindowBench&) = delete;
  WindowBench& operator=(const WindowBench&) = delete;

  [[nodiscard]] PlatformServices Services(EventPump& events) {
    PlatformServices services = host_.Services(events);
    services.programFolder = FromWide(folder_.Path().native()).value();
    return services;
  }

  /// The host's path of the sample product.
  [[nodiscard]] static std::filesystem::path Product() { return L"C:\\Storefront"; }

  /// The program's path of the stand-in compiler.
  [[nodiscard]] static std::string Compiler() {
    return FromWide(std::filesystem::path(STANDIN_COMPILER).make_preferred().native()).value();
  }

 private:
  static constexpr const wchar_t* kSettings = L"Software\\GorbexWindowTest";

  TemporaryFolder folder_;
  WindowsHost host_;
  HKEY settings_ = nullptr;
};

}  // namespace gorbex::test
