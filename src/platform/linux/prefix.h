#pragma once

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/linux/folder_names.h"
#include "platform/windows_path.h"

namespace gorbex {

/// The folder that serves as a Windows installation: drive_c/, dosdevices/ and *.reg, with the same
/// layout as a Wine prefix. Maps Windows paths (code-page bytes) to host paths (UTF-8) and back.
class Prefix {
 public:
  using Environment = std::function<std::optional<std::string>(const char* name)>;

  /// The folder named by the option, else GORBEX_PREFIX, else WINEPREFIX, else ~/.wine when it
  /// exists, else $XDG_DATA_HOME/gorbexbuilder.
  static std::filesystem::path Choose(const std::optional<std::filesystem::path>& option,
                                      const Environment& environment);

  /// Makes the folder when it does not exist yet. Error 76 or 70 when it cannot be made.
  explicit Prefix(const std::filesystem::path& root);

  [[nodiscard]] const std::filesystem::path& Root() const { return root_; }

  /// True when Wine made it: it has Wine's registry files.
  [[nodiscard]] bool IsWine() const;

  /// A host path and what the host knows about it, links followed.
  struct HostEntry {
    std::string path;
    struct stat info {};
  };

  /// The file or folder of the Windows path, found without regard to letter case: an exact match
  /// first, then a look through the folder. Nothing when it does not exist.
  [[nodiscard]] std::optional<HostEntry> Find(const std::string& windowsPath) const;

  /// Only the host path of what Find finds.
  [[nodiscard]] std::optional<std::string> Existing(const std::string& windowsPath) const;

  /// The host path of a file whose names are all spelled as in the Windows path, whether it exists
  /// or not. Nothing when it cannot exist.
  [[nodiscard]] std::optional<std::string> Exact(const std::string& windowsPath) const;

  /// As Existing, but the last component may be absent: where a new file of that name would go.
  /// Nothing when its folder does not exist or the name is impossible.
  [[nodiscard]] std::optional<std::string> Target(const std::string& windowsPath) const;

  /// As Target, for what Find has not found.
  [[nodiscard]] std::optional<std::string> NewTarget(const std::string& windowsPath) const;

  /// The Windows path of a host path (absolute or relative to the current folder): "C:\..." when it
  /// is on a drive of the prefix, else "Z:\...". Error 52 when a character has no code-page byte.
  [[nodiscard]] std::string WindowsPath(const std::filesystem::path& hostPath) const;

 private:
  [[nodiscard]] std::string StartOf(const ParsedPath& path) const;
  [[nodiscard]] std::optional<HostEntry> Find(const ParsedPath& path) const;
  [[nodiscard]] std::string ExactPath(const ParsedPath& path) const;
  [[nodiscard]] std::optional<std::string> SimilarPath(const ParsedPath& path) const;
  [[nodiscard]] std::optional<std::string> Child(const std::string& folder,
                                                 std::string_view name) const;
  void LayOut() const;

  std::filesystem::path root_;
  mutable FolderNames names_;
};

}  // namespace gorbex
