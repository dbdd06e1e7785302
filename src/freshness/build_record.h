#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "freshness/fingerprint.h"
#include "freshness/project_sources.h"

namespace gorbex {

/// Something that a binary was made of, and the binary itself.
struct BuildInput {
  enum class Kind : char {
    ProjectFile = 'P',  ///< only of the lines that no build changes
    Member = 'M',
    Companion = 'C',  ///< the binary part of a member
    Reference = 'R',  ///< to a component that the registry leads to
    Stray = 'S',      ///< a reference that the registry does not know
    Compatible = 'X',
    Compiler = 'K',
    Binary = 'B',
  };

  Kind kind = Kind::Member;
  std::string name;   ///< of a file: as the project writes it; else what the registry is asked for
  std::string place;  ///< the full path; empty where the name leads there from the project's folder
  Fingerprint print{};

  bool operator==(const BuildInput&) const = default;
};

/// The inputs of a successful build of a project into one place.
struct BuildRecord {
  std::string project;  ///< full paths
  std::string output;
  std::string when;  ///< "dd/mm/yyyy hh:nn:ss"
  std::chrono::milliseconds duration{0};
  std::string version{};  ///< major.minor.revision
  DebugTexts debug{};     ///< as the compiler found them
  std::vector<BuildInput> inputs{};
};

/// One line without its end. Nothing in it depends on the system.
[[nodiscard]] std::string LineOf(const BuildRecord& record);

/// The whole record of a line; nothing when the line is damaged or of another version.
[[nodiscard]] std::optional<BuildRecord> RecordOf(std::string_view line);

/// The project and the output of a line without the rest; nothing when the line is damaged or of
/// another version.
struct RecordKey {
  std::string project;
  std::string output;
};
[[nodiscard]] std::optional<RecordKey> KeyOf(std::string_view line);

}  // namespace gorbex
