#pragma once

#include <optional>
#include <string>

#include "freshness/freshness.h"

namespace gorbex {

/// One comparison of what a project was built from with what is there now.
class Freshness::Check {
 public:
  Check(Freshness& owner, const std::string& project) : owner_(owner), project_(project) {}

  [[nodiscard]] Judgement Run();

  /// Whether files look another way than the record says, though they hold the same.
  [[nodiscard]] bool HasNewLooks() const { return hasNewLooks_; }

  /// The record with the files as they look now.
  [[nodiscard]] const BuildRecord& Renewed() const { return record_; }

 private:
  using Kind = Reason::Kind;

  void Add(Kind kind, const std::string& subject, const std::string& text);
  void CheckSources();
  void CheckProjectFile(Fingerprint& known, const std::optional<FileStamp>& stamp);
  void CheckDebug(const DebugTexts& own);
  void CheckSource(BuildInput& input, const FileLook& look);
  void CheckCompatible(BuildInput& input);
  void CheckBinary(BuildInput& input);
  void CheckShared();
  void CheckTerms();

  /// The file as it is now; takes a new look over into the record when it holds the same.
  [[nodiscard]] Fingerprint Now(BuildInput& input, const std::string& path, Covered covered);
  void TakeLook(Fingerprint& known, const std::optional<FileStamp>& stamp);

  Freshness& owner_;
  std::string project_;
  BuildRecord record_;
  std::vector<Reason> reasons_;
  bool hasNewLooks_ = false;
};

}  // namespace gorbex
