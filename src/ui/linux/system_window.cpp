#include "ui/system_window.h"

#include <cctype>

namespace gorbex::ui {

// "*.b" as "*.[bB]": the toolkit's patterns tell the cases of letters apart. Programs have any name
// here.
std::string FilePattern(const std::string& pattern) {
  if (pattern == "*.exe") return "*";
  std::string any;
  for (const char letter : pattern) {
    const auto byte = static_cast<unsigned char>(letter);
    const char lower = static_cast<char>(std::tolower(byte));
    const char upper = static_cast<char>(std::toupper(byte));
    any += lower == upper ? std::string(1, letter) : std::string{'[', lower, upper, ']'};
  }
  return any;
}

void TellWhySessionWaits(wxWindow& /*window*/, const wxString& /*why*/) {}

}  // namespace gorbex::ui
