#pragma once

#include <new>
#include <span>
#include <string>
#include <system_error>

#include "platform/runtime_error.h"

namespace gorbex {

/// An error of the system about a file, and the number under which the program reports it.
struct FileFailure {
  int error;
  ErrorNumber number;
};

/// PathFileAccess for an error that is not among those known.
[[nodiscard]] inline ErrorNumber NumberIn(std::span<const FileFailure> known, int error) {
  for (const FileFailure& failure : known) {
    if (failure.error == error) return failure.number;
  }
  return ErrorNumber::PathFileAccess;
}

/// Runs an action on whole files and reports its failure under the path as it was given.
template <typename Action>
auto Reporting(std::span<const FileFailure> known, const std::string& path, const Action& action) {
  try {
    return action();
  } catch (const std::system_error& error) {
    throw RuntimeError(NumberIn(known, error.code().value()), path);
  } catch (const std::bad_alloc&) {
    throw RuntimeError(ErrorNumber::OutOfMemory, path);
  }
}

}  // namespace gorbex
