#pragma once

#include <functional>
#include <new>
#include <source_location>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "core/dialogs.h"
#include "platform/runtime_error.h"

namespace gorbex {

inline constexpr std::string_view kApplicationTitle = "GorbexBuilder";

/// Shows the standard report of a run-time error and takes the user's answer.
class ErrorReport {
 public:
  /// Takes the report's text as one line, for reports that are also recorded.
  using Record = std::function<void(const std::string& line)>;

  explicit ErrorReport(Dialogs& dialogs, Record record = {})
      : dialogs_(dialogs), record_(std::move(record)) {}

  /// `procedure` is the procedure's fixed name, such as ": frmBuilder.SaveProject"; line 0 is an
  /// unknown line. The answer is Abort, Retry or Ignore.
  Answer Show(const RuntimeError& error, std::string_view procedure, unsigned line);

 private:
  Dialogs& dialogs_;
  Record record_;
};

/// The statement guard. A procedure of the program is a body whose statements run under a guard
/// that knows the procedure's name:
///
///     return Procedure(report, ": frmBuilder.SaveProject").Run([&](Procedure& on) {
///       on([&] { files.Write(path, text); });
///       on([&] { title = path; });
///     });
///
/// A statement that raises a run-time error is reported with its own line. Retry runs it again,
/// Ignore goes on after it (its value is then the default of its type), Abort leaves the body. An
/// error raised between guarded statements is reported too and then leaves the body.
class Procedure {
 public:
  Procedure(ErrorReport& report, std::string_view name) : report_(&report), name_(name) {}

  /// A procedure that passes over every failing statement without a report.
  static Procedure IgnoringErrors() { return {}; }

  /// Runs the body; false when it was left by Abort.
  template <class Body>
  bool Run(Body&& body) {
    try {
      Statement([&] { std::forward<Body>(body)(*this); }, 0, Outermost::Yes);
      return true;
    } catch (const Left&) {
      return false;
    }
  }

  /// Runs a body that is one statement, and gives its value: the default of its type after Abort.
  template <class S>
  auto Do(S&& statement, std::source_location at = std::source_location::current())
      -> std::invoke_result_t<S> {
    try {
      return Statement(std::forward<S>(statement), at.line(), Outermost::No);
    } catch (const Left&) {
      return std::invoke_result_t<S>();
    }
  }

  /// Runs one statement and gives its value.
  template <class S>
  auto operator()(S&& statement, std::source_location at = std::source_location::current()) {
    return Statement(std::forward<S>(statement), at.line(), Outermost::No);
  }

 private:
  struct Left {};
  enum class Outermost { No, Yes };

  Procedure() = default;

  template <class S>
  auto Statement(S&& statement, unsigned line, Outermost outermost) -> std::invoke_result_t<S> {
    for (;;) {
      try {
        return statement();
      } catch (const RuntimeError& error) {
        if (!Again(error, line, outermost)) break;
      } catch (const std::bad_alloc&) {
        if (!Again(RuntimeError(ErrorNumber::OutOfMemory), line, outermost)) break;
      }
    }
    return std::invoke_result_t<S>();
  }

  /// True to run the statement again, false to go on after it.
  bool Again(const RuntimeError& error, unsigned line, Outermost outermost) const;

  ErrorReport* report_ = nullptr;
  std::string_view name_;
};

}  // namespace gorbex
