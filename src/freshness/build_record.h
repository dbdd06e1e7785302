#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
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

/// An input that many projects have in common: a reference, or the compiler.
using SharedInput = std::shared_ptr<const BuildInput>;

/// The inputs of a successful build of a project into one place.
struct BuildRecord {
  std::string project;  ///< full paths
  std::string output;
  std::string when;  ///< "dd/mm/yyyy hh:nn:ss"
  std::chrono::milliseconds duration{0};
  std::string version{};  ///< major.minor.revision
  DebugTexts debug{};     ///< as the compiler found them
  std::vector<BuildInput> own{};
  std::vector<SharedInput> shared{};
};

/// The hash at the end of a shared input's line; it identifies the line.
using LineId = std::uint64_t;

// Lines are without their ends. Nothing in them depends on the system. A line that is damaged or of
// another version gives nothing.

[[nodiscard]] std::string LineOf(const BuildInput& shared);
[[nodiscard]] std::optional<BuildInput> SharedInputOf(std::string_view line);

/// The id of a whole line, as its end tells it.
[[nodiscard]] LineId IdOf(std::string_view line);

/// The line of a record names its shared inputs by the ids of their lines.
[[nodiscard]] std::string LineOf(const BuildRecord& record, const std::vector<LineId>& shared);

/// `sharedInput` is asked for each id; a record of an unknown one is damaged.
[[nodiscard]] std::optional<BuildRecord> RecordOf(
    std::string_view line, const std::function<SharedInput(LineId)>& sharedInput);

/// The ids in the line of a record.
[[nodiscard]] std::vector<LineId> SharedIdsOf(std::string_view line);

/// The project and the output of a record's line without the rest.
struct RecordKey {
  std::string project;
  std::string output;
};
[[nodiscard]] std::optional<RecordKey> KeyOf(std::string_view line);

}  // namespace gorbex
