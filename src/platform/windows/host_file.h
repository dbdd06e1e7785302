#pragma once

#include <cstddef>
#include <string>

namespace gorbex {

// Whole files, by full path. Failures are std::system_error with the system's number.

inline constexpr std::size_t kLargestFile = std::size_t{512} << 20U;

/// Fails with ERROR_NOT_ENOUGH_MEMORY when too large.
[[nodiscard]] std::string ReadHostFile(const std::wstring& path);

/// Puts a new file in the place of the old one, which stays whole when anything fails. A symbolic
/// link stays and its target is replaced. An old file hands down its rights, attributes and
/// streams. One that has several names (hard links), or that another program keeps open for longer
/// than a second, is overwritten where it is, as far as its rights and that program allow it.
void ReplaceHostFile(const std::wstring& path, const std::string& bytes);

/// Adds at the end with one system write; nothing is added when it fails.
void AppendHostFile(const std::wstring& path, const std::string& bytes);

}  // namespace gorbex
