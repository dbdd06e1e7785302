#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

#include "platform/windows/file_system.h"
#include "platform/windows/wide_text.h"
#include "tests/faults/failing_calls.h"
#include "tests/platform/temporary_folder.h"
#include "tests/support/memory_registry.h"

namespace gorbex::test {

// A sweep of all takes too long where each call is one to another program.
inline const std::vector<FaultsInTurn> kSweeps = {
    {{ERROR_ACCESS_DENIED}, {ERROR_DISK_FULL}, {ERROR_IO_DEVICE}, {ERROR_FILE_NOT_FOUND}},
    {{ERROR_DISK_FULL, Fault::Kind::ShortWrite}},
    {{ERROR_UNABLE_TO_MOVE_REPLACEMENT_2, Fault::Kind::LostFile}}};

/// Another program has every file open: while it does, none can be replaced by a new one.
inline bool areFilesHeld = false;

/// The files of this system, with a folder as the drive C:.
class FilesBelow : public FileSystem {
 public:
  explicit FilesBelow(const std::filesystem::path& folder)
      : folder_(FromWide(std::filesystem::path(folder).make_preferred().native()).value()) {}

  [[nodiscard]] std::optional<FileInfo> Look(const std::string& path) const override {
    return files_.Look(Below(path));
  }
  [[nodiscard]] std::string Read(const std::string& path) const override {
    return files_.Read(Below(path));
  }
  [[nodiscard]] std::vector<FolderEntry> List(const std::string& folder) const override {
    return files_.List(Below(folder));
  }
  void Write(const std::string& path, const std::string& bytes) override {
    files_.Write(Below(path), bytes);
  }
  void Append(const std::string& path, const std::string& bytes) override {
    files_.Append(Below(path), bytes);
  }
  void Remove(const std::string& path) override { files_.Remove(Below(path)); }
  void SetAttributes(const std::string& path, std::uint32_t attributes) override {
    files_.SetAttributes(Below(path), attributes);
  }
  void CreateFolder(const std::string& path) override { files_.CreateFolder(Below(path)); }

 private:
  [[nodiscard]] std::string Below(const std::string& path) const {
    return folder_ + path.substr(std::string_view("C:").size());
  }

  WindowsFileSystem files_;
  std::string folder_;
};

/// The files of this system in a folder of the test's own. The registry is one in memory.
struct FaultBench {
  TemporaryFolder folder;
  FilesBelow files{folder.Path()};
  Journal journal;
  MemoryRegistry registry{journal};

  /// Where the program's path is in the folder.
  [[nodiscard]] static std::string HostName(const std::string& path) { return path.substr(3); }

  [[nodiscard]] static std::vector<std::string> Complaints() { return {}; }
};

}  // namespace gorbex::test
