#pragma once

#include <map>
#include <string>
#include <vector>

#include "check/finding.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {

/// Findings on files. Many in one folder have one cause, such as a folder that was not checked out,
/// and become one finding.
class ByFolder {
 public:
  /// How a finding on several files begins, such as "sources are missing".
  explicit ByFolder(std::string manyText) : manyText_(std::move(manyText)) {}

  void Add(const std::string& file, Finding finding) {
    folders_[LowerCase(StripPath(file))].push_back({file, std::move(finding)});
  }

  void MoveTo(Findings& found);

 private:
  struct Entry {
    std::string file;
    Finding finding;
  };

  [[nodiscard]] Finding Joined(std::vector<Entry>& entries) const;

  std::string manyText_;
  std::map<std::string, std::vector<Entry>> folders_;
};

}  // namespace gorbex
