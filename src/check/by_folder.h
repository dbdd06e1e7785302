#pragma once

#include <map>
#include <string>

#include "check/finding.h"
#include "core/file_tools.h"
#include "platform/code_page.h"

namespace gorbex {

/// Joins many findings on files of one folder into one, since they usually have one cause, such as
/// a folder that was not checked out.
class ByFolder {
 public:
  /// How a finding on several files begins, such as "sources are missing".
  explicit ByFolder(std::string manyText) : manyText_(std::move(manyText)) {}

  /// The subject is the file's full path.
  void Add(Finding finding) {
    folders_[LowerCase(StripPath(finding.subject))].push_back(std::move(finding));
  }

  void MoveTo(Findings& found);

 private:
  [[nodiscard]] Finding Joined(Findings& entries) const;

  std::string manyText_;
  std::map<std::string, Findings> folders_;
};

}  // namespace gorbex
