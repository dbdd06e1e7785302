#pragma once

#include <sys/types.h>

#include "platform/file_system.h"
#include "platform/linux/prefix.h"
#include "platform/runtime_error.h"

namespace gorbex {

/// Files of the host, reached through the prefix. "Read-only" is the absence of the owner's write
/// bit, and it refuses changes to root as well. Times are the host's, in Coordinated Universal
/// Time.
class LinuxFileSystem : public FileSystem {
 public:
  explicit LinuxFileSystem(const Prefix& prefix);

  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override;
  [[nodiscard]] std::vector<std::optional<FileInfo>> LookIn(
      const std::string& folder, const std::vector<std::string_view>& names) const override;
  [[nodiscard]] std::string Read(const std::string& path) const override;
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override;
  void Write(const std::string& path, const std::string& bytes) override;
  void WriteUnsynced(const std::string& path, const std::string& bytes) override;
  void Append(const std::string& path, const std::string& bytes) override;
  void Remove(const std::string& path) override;
  void SetAttributes(const std::string& path, std::uint32_t attributes) override;
  void CreateFolder(const std::string& path) override;

 private:
  [[nodiscard]] ErrorNumber AbsenceOf(const std::string& path) const;
  [[nodiscard]] std::string WritableTarget(const std::string& path) const;

  const Prefix& prefix_;
  mode_t newFileMode_;  ///< what the user's file mask leaves
};

}  // namespace gorbex
