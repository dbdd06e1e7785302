#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "analysis/executable_index.h"
#include "core/member.h"
#include "core/signal.h"

namespace gorbex {

/// Answers which project of the build produces a component. Follows the changes of the collection,
/// which must outlive it.
class GroupDependency {
 public:
  explicit GroupDependency(MemberCollection& members);

  /// As FindGroupDependency(), with the project's rank among the records added since the last
  /// clearing, which counts from 0 and is not closed up by removals.
  [[nodiscard]] std::optional<ExecutableIndex::Entry> FindProducer(
      std::string_view componentPath, std::string_view projectPath) const {
    return index_.FirstIn(componentPath, projectPath);
  }

  /// The path of the first project, other than the given one (exact comparison), whose `EXEName`
  /// occurs in the component path in any letter case; empty when there is none. A substring
  /// suffices.
  [[nodiscard]] std::string FindGroupDependency(std::string_view componentPath,
                                                std::string_view projectPath) const;

 private:
  ExecutableIndex index_;
  Subscription added_;
  Subscription removing_;
  Subscription cleared_;
};

}  // namespace gorbex
