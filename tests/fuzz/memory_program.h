#pragma once

#include "app/program.h"
#include "tests/support/memory_platform.h"
#include "tests/support/scripted_dialogs.h"

namespace gorbex::test {

/// A user who goes on after every error.
class IgnoringUser : public ScriptedDialogs {
 public:
  using ScriptedDialogs::ScriptedDialogs;
  Answer Show(const Message& message) override {
    return message.buttons == Buttons::AbortRetryIgnore ? Answer::Ignore
                                                        : SafeAnswer(message.buttons);
  }
};

/// The whole program over a system in memory, with its build project cleared as after a start.
struct MemoryProgram {
  MemoryPlatform platform;
  IgnoringUser dialogs{platform.journal};
  Program program{platform.Services(), dialogs};

  MemoryProgram() { program.window.ClearBuildProject(); }
};

}  // namespace gorbex::test
