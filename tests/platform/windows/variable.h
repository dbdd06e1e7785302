#pragma once

#include <windows.h>

#include <filesystem>
#include <optional>
#include <string>

#include "platform/windows/child_process.h"
#include "platform/windows/wide_text.h"

namespace gorbex::test {

/// A variable of this process, which is as it was again after the test.
class Variable {
 public:
  Variable(const char* name, const std::string& value)
      : name_(ToWide(name)), before_(EnvironmentVariable(name_.c_str())) {
    SetEnvironmentVariableW(name_.c_str(), ToWide(value).c_str());
  }
  ~Variable() { SetEnvironmentVariableW(name_.c_str(), before_ ? before_->c_str() : nullptr); }

 private:
  std::wstring name_;
  std::optional<std::wstring> before_;
};

inline std::string WindowsPath(std::filesystem::path path) {
  return FromWide(path.make_preferred().native()).value();
}

}  // namespace gorbex::test
