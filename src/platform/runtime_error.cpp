#include "platform/runtime_error.h"

namespace gorbex {
namespace {

struct NumberText {
  ErrorNumber number;
  std::string_view text;
};

constexpr NumberText kTexts[] = {
    {ErrorNumber::InvalidCall, "Invalid procedure call or argument"},
    {ErrorNumber::Overflow, "Overflow"},
    {ErrorNumber::OutOfMemory, "Out of memory"},
    {ErrorNumber::SubscriptOutOfRange, "Subscript out of range"},
    {ErrorNumber::TypeMismatch, "Type mismatch"},
    {ErrorNumber::BadFileName, "Bad file name or number"},
    {ErrorNumber::FileNotFound, "File not found"},
    {ErrorNumber::DeviceError, "Device I/O error"},
    {ErrorNumber::DiskFull, "Disk full"},
    {ErrorNumber::TooManyFiles, "Too many files"},
    {ErrorNumber::PermissionDenied, "Permission denied"},
    {ErrorNumber::PathFileAccess, "Path/File access error"},
    {ErrorNumber::PathNotFound, "Path not found"},
    {ErrorNumber::ObjectNotSet, "Object variable or With block variable not set"},
    {ErrorNumber::PropertyReadOnly, "Set not supported (read-only property)"},
    {ErrorNumber::CannotCreateObject, "ActiveX component can't create object"},
    {ErrorNumber::NoSuchProperty, "Object doesn't support this property or method"},
    {ErrorNumber::AutomationError, "Automation error"},
    {ErrorNumber::DuplicateKey,
     "This key is already associated with an element of this collection"},
    {ErrorNumber::IndexOutOfBounds, "Index out of bounds"},
    {ErrorNumber::ElementNotFound, "Element not found"},
    {ErrorNumber::KeyNotUnique, "Key is not unique in collection"},
};

std::string_view TextOf(ErrorNumber number) {
  for (const auto& known : kTexts) {
    if (known.number == number) return known.text;
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
