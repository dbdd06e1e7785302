#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>

#include "freshness/fingerprint.h"
#include "platform/clock.h"
#include "platform/component_inspector.h"
#include "platform/file_system.h"

namespace gorbex {

/// What of a file its fingerprint covers.
enum class Covered {
  Contents,
  Interface  ///< the type library; all of a file that has none
};

/// Takes the fingerprints of files. Looks at each file first and reads only what has changed since
/// its fingerprint was taken; looks once until it is told to look again. Nothing here raises an
/// error.
class FileLooks {
 public:
  FileLooks(const FileReader& files, const ComponentInspector& components, const Clock& clock)
      : files_(files), components_(components), clock_(clock) {}

  /// The file's fingerprint. `known` is one that was taken earlier: its hash is taken over when the
  /// file looks as it did then.
  [[nodiscard]] Fingerprint Of(const std::string& path, Covered covered,
                               const Fingerprint& known = {});

  /// How the file looks; nothing when it is missing, not a file, or has changed too recently.
  [[nodiscard]] std::optional<FileStamp> StampOf(const std::string& path);

  /// To be called after files may have changed.
  void LookAgain() { ++round_; }

 private:
  struct Entry {
    std::uint64_t round = 0;
    Fingerprint::State state = Fingerprint::State::Missing;
    std::optional<FileStamp> stamp;
    std::optional<ContentHash> contentsHash;
    std::optional<ContentHash> interfaceHash;
  };

  [[nodiscard]] Entry& Looked(const std::string& path);
  void Look(const std::string& path, Entry& entry) const;
  void Read(const std::string& path, Entry& entry) const;

  const FileReader& files_;
  const ComponentInspector& components_;
  const Clock& clock_;
  std::uint64_t round_ = 1;
  std::unordered_map<std::string, Entry> entries_;  ///< by path
};

}  // namespace gorbex
