#pragma once

#include "platform/source_control.h"

namespace gorbex {

/// Stands where a source-control client would: none is connected, so nothing can be opened.
class ClosedSourceControl : public SourceControl {
 public:
  void Open(const std::string& iniPath, const std::string& user,
            const std::string& password) override;
  [[nodiscard]] std::string UserName() const override { return {}; }
  [[nodiscard]] std::unique_ptr<SourceControlItem> VSSItem(const std::string& spec) override;
};

}  // namespace gorbex
