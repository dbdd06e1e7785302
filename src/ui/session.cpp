#include "ui/session.h"

#include "ui/main_frame.h"
#include "ui/text_conversion.h"

namespace gorbex::ui {

Session::Session(Host& host)
    : host_(host), dialogs_(host), program_(host.Services(events_), dialogs_) {
  program_.compile.keepOthersOut = [this] { return host_.BuildAlone(); };
}

void Session::Start(const std::string& typed) {
  auto* frame = new MainFrame(program_);
  dialogs_.SetParent(frame);
  frame->Bind(wxEVT_DESTROY, [this, frame](wxWindowDestroyEvent& event) {
    if (event.GetEventObject() == frame) dialogs_.SetParent(nullptr);
    event.Skip();
  });
  program_.start.SetCommandLine(CommandLine(typed));
  program_.start.Form_Load();
  frame->Show();
}

std::string Session::CommandLine(const std::string& typed) const {
  if (typed.empty() || typed == "show") return typed;
  // The program says that it cannot open what has no path.
  return host_.TypedPath(typed).value_or(FromWx(wxString::FromUTF8(typed)));
}

}  // namespace gorbex::ui
