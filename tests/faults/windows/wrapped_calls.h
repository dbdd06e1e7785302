#pragma once

namespace gorbex::test {

/// Another program that has every file open: while it lives, none can be replaced by a new one.
class HeldFiles {
 public:
  HeldFiles();
  ~HeldFiles();
  HeldFiles(const HeldFiles&) = delete;
  HeldFiles& operator=(const HeldFiles&) = delete;
};

}  // namespace gorbex::test
