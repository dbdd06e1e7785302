#include "platform/runtime_error.h"

namespace gorbex {
namespace {

std::string_view TextOf(ErrorNumber number) {
  switch (number) {
    case ErrorNumber::InvalidCall:
      return "Invalid procedure call or argument";
    case ErrorNumber::Overflow:
      return "Overflow";
    case ErrorNumber::OutOfMemory:
      return "Out of memory";
    case ErrorNumber::SubscriptOutOfRange:
      return "Subscript out of range";
    case ErrorNumber::TypeMismatch:
      return "Type mismatch";
    case ErrorNumber::BadFileName:
      return "Bad file name or number";
    case ErrorNumber::FileNotFound:
      return "File not found";
    case ErrorNumber::DeviceError:
      return "Device I/O error";
    case ErrorNumber::DiskFull:
      return "Disk full";
    case ErrorNumber::TooManyFiles:
      return "Too many files";
    case ErrorNumber::PermissionDenied:
      return "Permission denied";
    case ErrorNumber::PathFileAccess:
      return "Path/File access error";
    case ErrorNumber::PathNotFound:
      return "Path not found";
    case ErrorNumber::ObjectNotSet:
      return "Object variable or With block variable not set";
    case ErrorNumber::PropertyReadOnly:
      return "Set not supported (read-only property)";
    case ErrorNumber::CannotCreateObject:
      return "ActiveX component can't create object";
    case ErrorNumber::NoSuchProperty:
      return "Object doesn't support this property or method";
    case ErrorNumber::AutomationError:
      return "Automation error";
    case ErrorNumber::DuplicateKey:
      return "This key is already associated with an element of this collection";
    case ErrorNumber::IndexOutOfBounds:
      return "Index out of bounds";
    case ErrorNumber::ElementNotFound:
      return "Element not found";
    case ErrorNumber::KeyNotUnique:
      return "Key is not unique in collection";
  }
  return "Application-defined or object-defined error";
}

std::string Describe(ErrorNumber number, std::string_view subject) {
  std::string text(TextOf(number));
  if (!subject.empty()) text.append(": '").append(subject).append("'");
  return text;
}

}  // namespace

RuntimeError::RuntimeError(ErrorNumber number, std::string_view subject)
    : RuntimeError(Verbatim{}, number, Describe(number, subject)) {}

RuntimeError RuntimeError::WithDescription(ErrorNumber number, const std::string& description) {
  return {Verbatim{}, number, description};
}

RuntimeError RuntimeError::WithReason(ErrorNumber number, std::string_view subject,
                                      const std::string& reason) {
  return WithDescription(number, Describe(number, subject) + " (" + reason + ")");
}

}  // namespace gorbex
