#pragma once

#include <string>

#include "core/latest_source.h"
#include "core/main_window.h"
#include "scc/source_safe_session.h"

namespace gorbex {

/// Brings the working copies of projects up to date.
class GetLatest : public LatestSource {
 public:
  GetLatest(frmBuilder& window, SourceSafeSession& session) : window_(window), session_(session) {}

  bool GetLatestForProject(const std::string& projectKey) override;

 private:
  [[nodiscard]] bool GetItem(const std::string& spec);

  frmBuilder& window_;
  SourceSafeSession& session_;
};

}  // namespace gorbex
