#include "ui/text_conversion.h"

#include <string_view>

#include "platform/code_page.h"

namespace gorbex::ui {

wxString ToWx(const std::string& text) {
  wxString shown = wxString::FromUTF8(ToUtf8(text));
  // Texts of the toolkit's controls end at a zero.
  shown.Replace(wxString(wxUniChar(0)), wxString(wxUniChar(0x2400)));
  return shown;
}

std::string FromWx(const wxString& text) {
  return FromUtf8Roughly(text.utf8_string());
}

std::string Excerpt(const std::string& text, std::size_t most) {
  constexpr std::size_t kLongestWord = 1000;
  std::string shown;
  std::size_t length = 0;
  for (const char letter : std::string_view(text).substr(0, most)) {
    if (letter == '\n' || letter == ' ') length = 0;
    if (++length > kLongestWord) {
      shown += '\n';
      length = 1;
    }
    shown += letter;
  }
  return text.size() > most ? shown + "...\n" : shown;
}

}  // namespace gorbex::ui
