#pragma once

#include "platform/file_system.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// The system's files. A file is read-only when its read-only attribute is set.
class WindowsFileSystem : public FileSystem {
 public:
  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override;
  [[nodiscard]] std::string Read(const std::string& path) const override;
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override;
  void Write(const std::string& path, const std::string& bytes) override;
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path) override;
  void SetAttributes(const std::string& path, std::uint32_t attributes) override;
  void CreateFolder(const std::string& path) override;
};

}  // namespace gorbex
