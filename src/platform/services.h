#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/component_inspector.h"
#include "platform/component_objects.h"
#include "platform/event_pump.h"
#include "platform/file_system.h"
#include "platform/mail.h"
#include "platform/process.h"
#include "platform/registry.h"
#include "platform/source_control.h"

namespace gorbex {

/// Everything the program asks of the system it runs on. Owned by whoever composes the program; all
/// of it outlives the program.
struct PlatformServices {
  FileSystem& files;
  Registry& registry;
  ProcessLauncher& processes;
  Clock& clock;
  EventPump& events;
  ComponentInspector& components;
  ComponentObjects& objects;
  SourceControl& sourceControl;
  Mail& mail;
  std::string programFolder;  ///< Windows path of the program's own folder

  /// Keeps other programs from building here, and from building the product in that folder (empty
  /// for none), while the result lives. Null while another program builds.
  std::function<std::shared_ptr<void>(const std::string& productFolder)> keepOthersOut;

  /// The usual reason why a component cannot be registered here; empty for none.
  std::string registrationAdvice{};
};

}  // namespace gorbex
