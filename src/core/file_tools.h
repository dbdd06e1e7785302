#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/clock.h"
#include "platform/file_system.h"

namespace gorbex {

/// The folder of a path without its trailing "\"; empty when there is no "\".
[[nodiscard]] std::string StripPath(std::string_view path);

/// The text after the last "\"; the whole text when there is none.
[[nodiscard]] std::string GetFileFromPath(std::string_view path);

/// The file names of paths: the first three, and how many others there are.
[[nodiscard]] std::string FileNames(const std::vector<std::string>& paths);

/// A folder and a file name with exactly one "\" between them.
[[nodiscard]] std::string JoinPath(std::string_view folder, std::string_view name);

/// The whole file; empty when it cannot be read.
[[nodiscard]] std::string ReadOrEmpty(const FileReader& files, const std::string& path);

/// A file time as a calendar's, in Coordinated Universal Time.
[[nodiscard]] CivilTime ToCivil(FileTime time);

/// "DD/MM/YYYY hh:nn" of a file time, in Coordinated Universal Time.
[[nodiscard]] std::string GetFileDateString(FileTime time);

/// When the file was last written; "Not Found" when there is no such file, "N/A" when its times
/// cannot be read.
[[nodiscard]] std::string GetFileAmmendedTime(const FileReader& files, const std::string& path);

/// "ddmmyyyy" and "dd/mm/yyyy hh:nn:ss" of a time.
[[nodiscard]] std::string CompactDate(const CivilTime& time);
[[nodiscard]] std::string TimeStamp(const CivilTime& time);

}  // namespace gorbex
