#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <string>

#include "platform/process.h"
#include "platform/runtime_error.h"

namespace gorbex::test {

/// The number of the error that an action raises; 0 when it raises none.
inline int NumberOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.Number();
  }
  return 0;
}

/// Number and description of the error that an action raises; "<none>" when it raises none.
inline std::string ErrorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return std::to_string(error.Number()) + " " + error.Description();
  }
  return "<none>";
}

/// As ErrorOf, of a command that must not start.
inline std::string ErrorOf(ProcessLauncher& launcher, const std::string& commandLine) {
  return ErrorOf([&] { throw std::get<RuntimeError>(launcher.Start(commandLine)); });
}

/// The exit code of a command that has to start.
inline std::uint32_t CodeOf(ProcessLauncher& launcher, const std::string& commandLine) {
  using namespace std::chrono_literals;
  const auto process = std::get<0>(launcher.Start(commandLine));
  const auto code = process->ExitCode(10s);
  EXPECT_EQ(process->ExitCode(0ms), code);
  return code.value();
}

}  // namespace gorbex::test
