#include "ui/system_window.h"

#include <wx/menu.h>
#include <wx/toolbar.h>

#include <cctype>

namespace gorbex::ui {
namespace {

// "*.b" as "*.[bB]": the toolkit's patterns tell the cases of letters apart.
std::string InAnyCase(const std::string& pattern) {
  std::string any;
  for (const char letter : pattern) {
    const auto byte = static_cast<unsigned char>(letter);
    const char lower = static_cast<char>(std::tolower(byte));
    const char upper = static_cast<char>(std::toupper(byte));
    any += lower == upper ? std::string(1, letter) : std::string{'[', lower, upper, ']'};
  }
  return any;
}

}  // namespace

// Programs of this system have any name.
std::string FileFilter(const std::string& text, const std::string& pattern) {
  const std::string programs = pattern == "*.exe" ? "All programs|*|" : "";
  return programs + text + "|" + InAnyCase(pattern);
}

// The toolkit lays a frame out once at a size of a few pixels, which bars cannot have.
void HoldBarsBack(wxFrame& frame) {
  frame.GetMenuBar()->Hide();
  frame.GetToolBar()->Hide();
}

void ShowBars(wxFrame& frame) {
  frame.GetMenuBar()->Show();
  frame.GetToolBar()->Show();
}

void TellWhySessionWaits(wxWindow& /*window*/, const wxString& /*why*/) {}

}  // namespace gorbex::ui
