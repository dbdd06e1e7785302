#include "ui/window_session.h"

#include <wx/app.h>
#include <wx/utils.h>
#include <wx/weakref.h>

#include "ui/system_window.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

WindowSession::WindowSession(Host& host)
    : host_(host), dialogs_(host), program_(host.Services(events_), dialogs_) {
  dialogs_.SetBuildProject([this] { return program_.window.fileName; });
  findings_ = program_.findings.told.Connect([this](const std::string& text) {
    dialogs_.Ask({text, Buttons::Ok, MessageIcon::Exclamation});
  });
}

void WindowSession::Start(const std::string& typed) {
  auto* frame =
      new MainFrame(program_, [this](const std::string& folder) { return ShowFolder(folder); });
  program_.editor.hostPath = [this](const std::string& file) { return host_.HostPath(file); };
  dialogs_.SetParent(frame);
  frame->Bind(wxEVT_DESTROY, [this, frame](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == frame) dialogs_.SetParent(nullptr);
    event.Skip();
  });
  FollowUsersSession(frame);
  program_.start.SetCommandLine(CommandLine(typed));
  program_.start.Form_Load();
  frame->Show();
}

bool WindowSession::ShowFolder(const std::string& folder) const {
  const std::string path = host_.HostPath(folder);
  return !path.empty() && wxLaunchDefaultApplication(wxString::FromUTF8(path));
}

// The system wants its answer at once, so no question is asked while it waits. When the session may
// not end yet, the window closes afterwards and asks then; the system ends the session
// when the window is gone.
void WindowSession::FollowUsersSession(MainFrame* frame) {
  const wxWeakRef<MainFrame> window(frame);
  wxTheApp->Bind(wxEVT_QUERY_END_SESSION, [this, window](wxCloseEvent& event) {
    if (!window || program_.shutDown.SessionMayEnd() || !event.CanVeto()) return;
    TellWhySessionWaits(*window, "The build project is not saved.");
    event.Veto();
    window->CallAfter([window] {
      if (window) window->EndWithSession();
    });
  });
  wxTheApp->Bind(wxEVT_END_SESSION, [this, window](wxCloseEvent&) {
    if (window) TellWhySessionWaits(*window, "A build is being ended.");
    program_.shutDown.SessionEnds();
  });
}

std::string WindowSession::CommandLine(const std::string& typed) const {
  if (typed.empty() || typed == "show") return typed;
  // The program reports that it cannot open a file without a path.
  try {
    return host_.TypedPath(typed);
  } catch (const RuntimeError&) {
    return FromWx(wxString::FromUTF8(typed));
  }
}

}  // namespace gorbex::ui
