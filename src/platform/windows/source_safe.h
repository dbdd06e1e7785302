#pragma once

#include <memory>
#include <string>

#include "platform/event_pump.h"
#include "platform/source_control.h"
#include "platform/windows/automation_thread.h"

namespace gorbex {

/// SourceSafe, through its automation class. Error 429 where it is not installed; all its own
/// errors are in its own words.
class SourceSafe : public SourceControl, public EventHandler {
 public:
  void Open(const std::string& iniPath, const std::string& user,
            const std::string& password) override;
  [[nodiscard]] std::string UserName() const override { return user_; }
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override;

 private:
  std::shared_ptr<AutomationThread> thread_;
  KeptObject database_;  ///< null while not open
  std::string user_;
};

}  // namespace gorbex
