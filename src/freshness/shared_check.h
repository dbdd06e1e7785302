#pragma once

#include <string>
#include <string_view>

#include "freshness/freshness.h"

namespace gorbex {

/// One comparison of a shared input with what is there now.
class Freshness::SharedCheck {
 public:
  SharedCheck(Freshness& owner, const BuildInput& input) : owner_(owner), input_(input) {}

  [[nodiscard]] SharedFinding Run();

 private:
  using Kind = Reason::Kind;

  void CheckReference();
  void CheckStray();
  void CheckInterface();
  void CheckCompiler();
  void AddReference(std::string_view change);
  void Add(Kind kind, const std::string& subject, const std::string& text);

  /// The file as it is now; takes a new look over when it holds the same.
  [[nodiscard]] Fingerprint Now(Covered covered);

  Freshness& owner_;
  const BuildInput& input_;
  SharedFinding finding_;
};

}  // namespace gorbex
