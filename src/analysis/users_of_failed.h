#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "analysis/group_dependency.h"
#include "core/member.h"

namespace gorbex {

/// Knows which projects of a run use one that has failed in it, by the references they had when
/// this object was made. Each project is visited only once, even if many fail.
class UsersOfFailed {
 public:
  UsersOfFailed(const MemberCollection& members, const GroupDependency& group);

  void Add(const std::string& failed);

  /// The project that failed and that this one uses, directly or through others; empty when there
  /// is none.
  [[nodiscard]] std::string FailedUseOf(const std::string& path) const;

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::vector<std::string> paths_;
  std::unordered_map<std::string, std::size_t> numbers_;
  std::vector<std::vector<std::size_t>> users_;
  std::vector<std::size_t> failedUse_;  ///< by project; kNone where nothing failed
};

}  // namespace gorbex
