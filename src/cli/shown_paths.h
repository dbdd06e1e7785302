#pragma once

#include <string>

#include "platform/host.h"

namespace gorbex::cli {

/// Paths as the user's other programs know them, in UTF-8: those of the host, from the current
/// folder on where they are below it.
class ShownPaths {
 public:
  /// The host must outlive the object.
  explicit ShownPaths(const Host& host);

  /// The current folder with a "/" at its end.
  [[nodiscard]] const std::string& Top() const { return top_; }

  [[nodiscard]] std::string Full(const std::string& path) const;
  [[nodiscard]] std::string Short(const std::string& path) const;

 private:
  const Host& host_;
  std::string top_;
};

/// The path with "/" between its names.
[[nodiscard]] std::string WithSlashes(std::string path);

}  // namespace gorbex::cli
