#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <string>

#include "platform/process.h"

namespace gorbex::test {

/// The exit code of a command that has to start.
inline std::uint32_t CodeOf(ProcessLauncher& launcher, const std::string& commandLine) {
  using namespace std::chrono_literals;
  const auto process = std::get<0>(launcher.Start(commandLine));
  const auto code = process->ExitCode(10s);
  EXPECT_EQ(process->ExitCode(0ms), code);
  return code.value();
}

/// Number and description of the error of a command that must not start.
inline std::string StartError(ProcessLauncher& launcher, const std::string& commandLine) {
  const auto error = std::get<RuntimeError>(launcher.Start(commandLine));
  return std::to_string(error.Number()) + " " + error.Description();
}

}  // namespace gorbex::test
