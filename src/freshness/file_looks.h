#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "freshness/fingerprint.h"
#include "platform/clock.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// The part of a file that its fingerprint covers.
enum class Covered {
  Contents,
  Interface  ///< the type library; all of a file that has none
};

/// Facts about a file, known without reading it.
struct FileLook {
  Fingerprint::State state = Fingerprint::State::Missing;
  std::optional<FileStamp> stamp{};  ///< nothing also of a file that has changed too recently
};

/// Takes the fingerprints of files. Looks at each file first (only at its size, time and identity)
/// and reads only what has changed since its fingerprint was taken. Nothing here raises an error.
class FileLooks {
 public:
  FileLooks(const FileReader& files, const ComponentInspector& components, const Clock& clock)
      : files_(files), components_(components), clock_(clock) {}

  /// The file's fingerprint. `known` is one that was taken earlier: its hash is taken over when the
  /// file looks as it did then. Looks once until it is told to look again: for files that many
  /// projects ask for.
  [[nodiscard]] Fingerprint Of(const std::string& path, Covered covered,
                               const Fingerprint& known = {});

  /// Looks at files by their paths from a folder, in their order.
  [[nodiscard]] std::vector<FileLook> LookIn(const std::string& folder,
                                             const std::vector<std::string_view>& names) const;

  /// The fingerprint of a file's contents, which was just looked at; `known` as in Of.
  [[nodiscard]] Fingerprint ContentsOf(const std::string& path, const FileLook& look,
                                       const Fingerprint& known = {}) const;

  /// To be called after files may have changed.
  void LookAgain() { ++round_; }

 private:
  struct Entry {
    std::uint64_t round = 0;
    FileLook look;
    std::optional<ContentHash> contentsHash;
    std::optional<ContentHash> interfaceHash;
  };

  [[nodiscard]] Entry& Looked(const std::string& path);
  void Read(const std::string& path, Entry& entry) const;

  const FileReader& files_;
  const ComponentInspector& components_;
  const Clock& clock_;
  std::uint64_t round_ = 1;
  std::unordered_map<std::string, Entry> entries_;  ///< by path
};

}  // namespace gorbex
