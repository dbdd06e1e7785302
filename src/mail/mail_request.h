#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace gorbex {

/// The fields of a request's body: "GET", "BUILD", "PATH folder" and "PROJECT file or spec",
/// each followed by a comma and known by its first three letters.
struct MailRequest {
  bool GetRequested = false;
  bool BuildRequested = false;
  std::string strBuildPath;               ///< ends with "\"; empty for the project's own folder
  std::optional<std::string> strProject;  ///< nothing when the body names none
  std::int64_t lastField = -1;            ///< the index of the last field; -1 for an empty body
};

/// Reads the fields before the last comma; the text after it is not a field.
[[nodiscard]] MailRequest ReadMailRequest(std::string_view body);

}  // namespace gorbex
