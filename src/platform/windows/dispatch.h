#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "platform/windows/com_pointer.h"

namespace gorbex {

// Automation objects by late binding: their members are found by name when they are used. Errors:
// 438 no such member, 383 a read-only property, 13 a value of another type, 91 there is no object.
// Errors of the object itself keep their words and numbers, as users of the
// language know them (their own numbers, or a negative one); 440 where there are no words.

class Dispatch;

/// The arguments for a member. The last ones may be left out if the member has defaults for them.
using Argument = std::variant<std::string, std::int32_t, bool>;
using Arguments = std::vector<Argument>;

/// The answer of a member, with what it owns. Error 13 when it is read as another type.
class MemberAnswer {
 public:
  /// The member's name is for errors.
  explicit MemberAnswer(std::string member) : member_(std::move(member)) { VariantInit(&value_); }
  ~MemberAnswer() { VariantClear(&value_); }
  MemberAnswer(MemberAnswer&& other) noexcept
      : member_(std::move(other.member_)), value_(other.value_) {
    VariantInit(&other.value_);
  }
  MemberAnswer& operator=(MemberAnswer&&) = delete;

  VARIANT* Place() { return &value_; }

  /// Numbers, dates and objects with a default property have texts, too.
  [[nodiscard]] std::string Text();
  [[nodiscard]] std::int32_t Long() { return As(VT_I4).lVal; }
  [[nodiscard]] bool Bool() { return As(VT_BOOL).boolVal != VARIANT_FALSE; }

  /// No object for Nothing.
  [[nodiscard]] Dispatch Object();

 private:
  VARIANT& As(VARTYPE type);

  std::string member_;
  VARIANT value_{};
};

class Dispatch {
 public:
  Dispatch() = default;
  explicit Dispatch(ComPointer<IDispatch> object) : object_(std::move(object)) {}

  explicit operator bool() const { return static_cast<bool>(object_); }

  [[nodiscard]] MemberAnswer Property(const std::string& name) const;
  void Let(const std::string& property, const Argument& value) const;

  /// A method with an answer, or a property with arguments.
  [[nodiscard]] MemberAnswer Ask(const std::string& name, const Arguments& arguments = {}) const;

  /// A method without an answer.
  void Do(const std::string& method, const Arguments& arguments = {}) const;

 private:
  void Invoke(const std::string& name, WORD kind, const Arguments& arguments,
              VARIANT* answer) const;

  ComPointer<IDispatch> object_;
};

}  // namespace gorbex
