#include "ui/system_window.h"

#include <windows.h>

namespace gorbex::ui {

std::string FileFilter(const std::string& text, const std::string& pattern) {
  return text + "|" + pattern;
}

void HoldBarsBack(wxFrame& /*frame*/) {}

void ShowBars(wxFrame& /*frame*/) {}

void TellWhySessionWaits(wxWindow& window, const wxString& why) {
  ShutdownBlockReasonCreate(window.GetHWND(), why.wc_str());
}

}  // namespace gorbex::ui
