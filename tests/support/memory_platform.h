#pragma once

#include "platform/services.h"
#include "tests/support/memory_components.h"
#include "tests/support/memory_file_system.h"
#include "tests/support/memory_mail.h"
#include "tests/support/memory_registry.h"
#include "tests/support/memory_source_control.h"
#include "tests/support/recording_events.h"
#include "tests/support/scripted_processes.h"

namespace gorbex::test {

/// A whole system in memory: every service a test can look into, and one journal of their effects.
struct MemoryPlatform {
  Journal journal;
  ManualClock clock;
  MemoryFileSystem files{journal};
  MemoryRegistry registry{journal};
  ScriptedProcesses processes{journal, clock};
  RecordingEvents events;
  FixedInspector components;
  MemoryComponents objects{journal};
  MemorySourceControl sourceControl{journal};
  MemoryMail mail{journal, files};
  std::function<std::shared_ptr<void>()> turn = [] { return std::make_shared<int>(); };
  std::string programFolder = "C:\\Program Files\\GorbexBuilder";

  MemoryPlatform() { files.AddFolder(programFolder); }
  MemoryPlatform(const MemoryPlatform&) = delete;
  MemoryPlatform& operator=(const MemoryPlatform&) = delete;

  [[nodiscard]] PlatformServices Services() {
    return {files,
            registry,
            processes,
            clock,
            events,
            components,
            objects,
            sourceControl,
            mail,
            programFolder,
            [this](const std::string&) { return turn(); },
            "ask an administrator"};
  }
};

}  // namespace gorbex::test
