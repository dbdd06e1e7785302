#include "ui/cut_text.h"

#include <wx/control.h>

namespace gorbex::ui {

wxString CutText(const wxString& text, std::size_t end, const wxDC& dc, int room) {
  if (dc.GetTextExtent(text).x <= room) return text;
  const wxString tail = "..." + text.Mid(end);
  const auto fits = [&](std::size_t letters) {
    return dc.GetTextExtent(text.Left(letters) + tail).x <= room;
  };
  if (end >= text.length()) return wxControl::Ellipsize(text, dc, wxELLIPSIZE_MIDDLE, room);
  if (!fits(0)) {
    const std::size_t name = text[end] == '\\' ? end + 1 : end;
    return wxControl::Ellipsize(text.Mid(name), dc, wxELLIPSIZE_MIDDLE, room);
  }
  std::size_t longest = 0;
  for (std::size_t tooLong = end; tooLong > longest + 1;) {
    const std::size_t letters = (longest + tooLong) / 2;
    (fits(letters) ? longest : tooLong) = letters;
  }
  while (longest > 0 && text[longest - 1] == '.') --longest;
  return text.Left(longest) + tail;
}

}  // namespace gorbex::ui
