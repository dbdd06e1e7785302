#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace gorbex::standin {

/// Takes the place of a binary's code: it changes whenever an input of the real compiler changes.
class SourceDigest {
 public:
  /// The text of the project file; blank lines do not count.
  void AddProject(std::string_view text);

  /// A source with its binary parts.
  void AddSource(const FileReader& files, const std::string& path);

  /// The part of a used component that a project sees, not the component's own code.
  void AddInterface(const FileReader& files, const std::string& component);

  /// For the end of the file, after all that a loader reads.
  [[nodiscard]] std::string Bytes() const;

 private:
  void Add(std::string_view bytes);

  std::string all_;  ///< the digests of all parts
};

}  // namespace gorbex::standin
