#include "ui/window_app.h"

#include <wx/msgdlg.h>

#include <exception>
#include <utility>

namespace gorbex::ui {

WindowApp::WindowApp(MakeHost makeHost, std::string typed)
    : makeHost_(std::move(makeHost)), typed_(std::move(typed)) {
  SetAppName("gorbexbuilder");
}

bool WindowApp::OnInit() {
  try {
    host_ = makeHost_();
    session_ = std::make_unique<WindowSession>(*host_);
    session_->Start(typed_);
    return true;
  } catch (const std::exception& error) {
    wxMessageBox(wxString::FromUTF8(error.what()), "GorbexBuilder", wxOK | wxICON_ERROR);
    return false;
  }
}

}  // namespace gorbex::ui
