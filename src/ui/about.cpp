#include "ui/about.h"

#include <wx/aboutdlg.h>

#include "ui/icons.h"

namespace gorbex::ui {

void ShowAbout(wxWindow* parent) {
  wxAboutDialogInfo info;
  info.SetName("GorbexBuilder");
  info.SetVersion(GORBEX_VERSION);
  info.SetDescription(
      "Builds products made of Visual Basic component projects,\n"
      "in the order that their references ask for.");
  info.SetCopyright(wxString::FromUTF8("\u00a9 2026 The GorbexBuilder developers. MIT licence."));
  wxIcon icon;
  icon.CopyFromBitmap(Icon("gorbexbuilder", 64).GetBitmap(wxSize(64, 64)));
  info.SetIcon(icon);
  wxAboutBox(info, parent);
}

}  // namespace gorbex::ui
