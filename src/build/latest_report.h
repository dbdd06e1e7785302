#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/latest_source.h"

namespace gorbex {

/// Collects the results of a run's gets for its end.
class LatestReport {
 public:
  void Add(const std::string& path, const LatestResult& result);

  /// A text for the user; empty when every get did all its work.
  [[nodiscard]] std::string Text() const;

 private:
  using Failure = std::pair<std::string, std::vector<std::string>>;  ///< why, and which projects

  std::vector<Failure> failures_;
  std::vector<std::string> toDo_;
};

}  // namespace gorbex
