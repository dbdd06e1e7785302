#pragma once

#include <string>

#include "app/program.h"
#include "platform/host.h"
#include "ui/event_loop_pump.h"
#include "ui/main_frame.h"
#include "ui/window_dialogs.h"

namespace gorbex::ui {

/// The program with everything it needs, in the order in which it is taken down again.
class WindowSession {
 public:
  /// The host must outlive the session.
  explicit WindowSession(Host& host);

  /// Shows the window and loads what the command line names: nothing, "show" or a file, in UTF-8.
  void Start(const std::string& typed);

 private:
  [[nodiscard]] std::string CommandLine(const std::string& typed) const;
  [[nodiscard]] bool ShowFolder(const std::string& folder) const;
  void FollowUsersSession(MainFrame* frame);

  Host& host_;
  WindowDialogs dialogs_;
  EventLoopPump events_;
  Program program_;
  Subscription findings_;
};

}  // namespace gorbex::ui
