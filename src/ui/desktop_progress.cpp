#include "ui/desktop_progress.h"

#include <wx/log.h>
#include <wx/notifmsg.h>
#include <wx/toplevel.h>

#include <algorithm>

#include "ui/text_conversion.h"

namespace gorbex::ui {
namespace {

// A message of the program is a window of it, too.
bool IsSomeWindowActive() {
  for (wxWindow* window : wxTopLevelWindows) {
    auto* top = wxDynamicCast(window, wxTopLevelWindow);
    if (top != nullptr && top->IsActive() && !top->IsIconized()) return true;
  }
  return false;
}

}  // namespace

DesktopProgress::DesktopProgress(wxFrame& frame, RunEvents& events, RunNotice& notice)
    : frame_(frame), notice_(notice) {
  notice_.isInFront = IsSomeWindowActive;
  subscriptions_.Add(events, [this](const RunEvent& event) { Hear(event); });
  subscriptions_.Add(notice.due, [this](const std::string& text) { Tell(text); });
}

DesktopProgress::~DesktopProgress() {
  notice_.isInFront = {};
}

void DesktopProgress::Hear(const RunEvent& event) {
  if (const auto* started = std::get_if<RunStarted>(&event)) {
    done_ = 0;
    const int all = std::max(1, static_cast<int>(started->paths.size()));
    bar_ = std::make_unique<wxAppProgressIndicator>(&frame_, all);
    bar_->SetValue(0);
  }
  const bool isOneDone = std::holds_alternative<ProjectCompiled>(event) ||
                         std::holds_alternative<ProjectSkipped>(event) ||
                         std::holds_alternative<ProjectUpToDate>(event);
  if (isOneDone && bar_) bar_->SetValue(++done_);
  const bool isOver =
      std::holds_alternative<RunDone>(event) || std::holds_alternative<RunEnded>(event);
  if (isOver) bar_.reset();
}

// The toolkit would show an error where no service takes notifications.
void DesktopProgress::Tell(const std::string& text) {
  const wxLogNull quiet;
  message_ = std::make_unique<wxNotificationMessage>("GorbexBuilder", ToWx(text), &frame_);
  message_->Show();
}

}  // namespace gorbex::ui
