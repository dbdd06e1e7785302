#include "ui/text_conversion.h"

#include "platform/code_page.h"

namespace gorbex::ui {

wxString ToWx(const std::string& text) {
  wxString shown = wxString::FromUTF8(ToUtf8(text));
  // Texts of the toolkit's controls end at a zero.
  shown.Replace(wxString(wxUniChar(0)), wxString(wxUniChar(0x2400)));
  return shown;
}

std::string FromWx(const wxString& text) {
  if (const auto whole = FromUtf8(text.utf8_string())) return *whole;
  std::string result;
  for (const wxUniChar letter : text) {
    result += FromUtf8(wxString(letter).utf8_string()).value_or("?");
  }
  return result;
}

}  // namespace gorbex::ui
