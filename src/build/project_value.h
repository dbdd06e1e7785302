#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/signal.h"
#include "platform/file_system.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// The place of a key's value in the text of a project file.
struct ValuePlace {
  std::size_t start = 0;  ///< where the first character after "=" is
  std::size_t size = 0;
  bool hasLineEnd = false;  ///< false for a value that ends with the text
};

/// The place of the value after the first "key=" in the text, in any letter case; nothing when
/// there is none.
[[nodiscard]] std::optional<ValuePlace> FindProjectValue(std::string_view text,
                                                         std::string_view key);

/// Reads and replaces single values of project files, as text; line order, sections and quotes mean
/// nothing here. A file that cannot be opened ends both without a report: a project that is not
/// checked out stays as it is, and the caller goes on.
class ProjectValue {
 public:
  explicit ProjectValue(FileSystem& files) : files_(files) {}

  /// The value of a key. Values have always been read so: a missing key gives the whole text of the
  /// file, a value without a line end begins with "=", a file that cannot be read gives "".
  [[nodiscard]] std::string ReadProjectValue(const std::string& path, std::string_view key);

  /// Replaces the value of a key and ends the file with one line break more. A missing key is not
  /// added, but the line break is. Always false.
  bool WriteProjectValue(const std::string& path, std::string_view key, std::string_view value);

  /// A file that could not be read or written, and why.
  Signal<std::string, RuntimeError> failed;

 private:
  FileSystem& files_;
};

}  // namespace gorbex
