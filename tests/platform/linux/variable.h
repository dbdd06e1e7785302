#pragma once

#include <cstdlib>
#include <string>

namespace gorbex::test {

/// A variable of this process, which is as it was again after the test.
class Variable {
 public:
  Variable(const char* name, const std::string& value) : name_(name) {
    if (const char* before = std::getenv(name)) before_ = before;
    setenv(name, value.c_str(), 1);
  }
  ~Variable() { setenv(name_, before_.c_str(), 1); }

 private:
  const char* name_;
  std::string before_;
};

}  // namespace gorbex::test
