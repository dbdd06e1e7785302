#pragma once

namespace gorbex {

/// The main window's load routine, run again when a compiler is wanted and none is known.
class ProgramStart {
 public:
  virtual ~ProgramStart() = default;
  virtual void Form_Load() = 0;
};

}  // namespace gorbex
