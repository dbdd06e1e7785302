#include "ui/clipboard.h"

#include <wx/clipbrd.h>

namespace gorbex::ui {

void CopyText(const wxString& text) {
  const wxClipboardLocker lock;
  if (!lock) return;
  wxTheClipboard->SetData(new wxTextDataObject(text));
}

}  // namespace gorbex::ui
