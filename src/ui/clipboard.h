#pragma once

#include <wx/clipbrd.h>

namespace gorbex::ui {

/// Puts a text into the clipboard; changes nothing while another program holds it.
inline void CopyText(const wxString& text) {
  const wxClipboardLocker lock;
  if (!lock) return;
  wxTheClipboard->SetData(new wxTextDataObject(text));
}

}  // namespace gorbex::ui
