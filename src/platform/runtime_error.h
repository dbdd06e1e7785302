#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace gorbex {

/// Run-time error numbers as the users of the compiler's language know them.
enum class ErrorNumber : int {
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  SubscriptOutOfRange = 9,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  DeviceError = 57,
  DiskFull = 61,
  TooManyFiles = 67,
  PermissionDenied = 70,
  PathFileAccess = 75,
  PathNotFound = 76,
  ObjectNotSet = 91,
  PropertyReadOnly = 383,
  CannotCreateObject = 429,
  NoSuchProperty = 438,
  AutomationError = 440,
  DuplicateKey = 457,
  IndexOutOfBounds = 35600,
  ElementNotFound = 35601,
  KeyNotUnique = 35602,
};

/// The one exception of the program: a number, and a description that names what it concerns.
class RuntimeError : public std::runtime_error {
 public:
  /// The number's own text; a subject (a file, a key) is quoted after it.
  explicit RuntimeError(ErrorNumber number, std::string_view subject = {});

  /// An error with these words, for services that have their own, such as a source-control client.
  static RuntimeError WithDescription(ErrorNumber number, const std::string& description);

  /// The number's own text for a subject, with the reason in brackets.
  static RuntimeError WithReason(ErrorNumber number, std::string_view subject,
                                 const std::string& reason);

  [[nodiscard]] int Number() const { return static_cast<int>(number_); }
  [[nodiscard]] ErrorNumber Code() const { return number_; }
  [[nodiscard]] std::string Description() const { return what(); }

 private:
  struct Verbatim {};
  RuntimeError(Verbatim, ErrorNumber number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  ErrorNumber number_;
};

}  // namespace gorbex
