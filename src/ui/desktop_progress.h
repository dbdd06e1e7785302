#pragma once

#include <wx/appprogress.h>
#include <wx/frame.h>

#include <memory>
#include <string>

#include "core/run_notice.h"

class wxNotificationMessage;

namespace gorbex::ui {

/// Shows a run outside of the window: its progress in the task bar, where the system has one, and a
/// silent notification when the run is over or asks, where the desktop shows them.
class DesktopProgress {
 public:
  /// All must outlive the object.
  DesktopProgress(wxFrame& frame, RunEvents& events, RunNotice& notice);
  ~DesktopProgress();
  DesktopProgress(const DesktopProgress&) = delete;
  DesktopProgress& operator=(const DesktopProgress&) = delete;

 private:
  void Hear(const RunEvent& event);
  void Tell(const std::string& text);

  wxFrame& frame_;
  RunNotice& notice_;
  std::unique_ptr<wxAppProgressIndicator> bar_;  ///< while a run goes on
  int done_ = 0;                                 ///< projects of the run that are done
  std::unique_ptr<wxNotificationMessage> message_;
  Subscriptions subscriptions_;
};

}  // namespace gorbex::ui
