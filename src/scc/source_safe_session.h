#pragma once

#include <memory>
#include <string>

#include "platform/source_control.h"

namespace gorbex {

/// The program's one source-control session. It has no login yet, so it is closed for good: every
/// look-up fails with the client's words.
class SourceSafeSession {
 public:
  explicit SourceSafeSession(SourceControl& database) : database_(database) {}

  /// Called at the start of every source-control command; does nothing when the session is open.
  void LoginToSourceSafe() {}

  /// Null when the database holds no item of that spec. Error while the session is closed.
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) {
    return database_.VSSItem(spec);
  }

 private:
  SourceControl& database_;
};

}  // namespace gorbex
