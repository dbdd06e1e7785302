#include "ui/palette.h"

#include <wx/settings.h>

namespace gorbex::ui {
namespace {

unsigned char Mixed(unsigned char one, unsigned char other, double share) {
  return static_cast<unsigned char>(one * share + other * (1 - share));
}

// A theme's own shadow colour may vanish on its list background, so ours lies between both.
wxColour Faded(double share) {
  const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
  const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
  return {Mixed(text.Red(), back.Red(), share), Mixed(text.Green(), back.Green(), share),
          Mixed(text.Blue(), back.Blue(), share)};
}

}  // namespace

wxColour TextColour(Colour colour) {
  constexpr double kShadow = 0.55;
  return colour == Colour::ButtonShadow ? Faded(kShadow)
                                        : wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
}

wxColour HintColour() {
  constexpr double kHint = 0.6;
  return Faded(kHint);
}

wxColour WarningColour() {
  const bool isDark = wxSystemSettings::GetAppearance().IsUsingDarkBackground();
  return isDark ? wxColour(255, 150, 80) : wxColour(178, 60, 0);
}

}  // namespace gorbex::ui
