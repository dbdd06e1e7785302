#include "ui/palette.h"

#include <wx/settings.h>

#include <cmath>

namespace gorbex::ui {
namespace {

unsigned char Mixed(unsigned char one, unsigned char other, double share) {
  return static_cast<unsigned char>(one * share + other * (1 - share));
}

// A colour between that one and the background of lists.
wxColour Faded(wxSystemColour colour, double share) {
  const wxColour full = wxSystemSettings::GetColour(colour);
  const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX);
  return {Mixed(full.Red(), back.Red(), share), Mixed(full.Green(), back.Green(), share),
          Mixed(full.Blue(), back.Blue(), share)};
}

}  // namespace

bool IsDark() {
  return wxSystemSettings::GetAppearance().IsUsingDarkBackground();
}

wxColour TextColour(Colour colour) {
  // A theme's own shadow colour may vanish on its list background.
  constexpr double kShadow = 0.55;
  return colour == Colour::ButtonShadow ? Faded(wxSYS_COLOUR_LISTBOXTEXT, kShadow)
                                        : wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOXTEXT);
}

wxColour HintColour() {
  constexpr double kHint = 0.6;
  return Faded(wxSYS_COLOUR_LISTBOXTEXT, kHint);
}

wxColour PaleSelectionColour() {
  return Faded(wxSYS_COLOUR_HIGHLIGHT, IsDark() ? 0.5 : 0.3);
}

// Some systems' own colour for links cannot be told from the background.
wxColour LinkColour() {
  constexpr double kLeast = 0.35;
  const wxColour system = wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT);
  const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
  if (std::abs(system.GetLuminance() - back.GetLuminance()) >= kLeast) return system;
  return IsDark() ? wxColour(110, 170, 255) : wxColour(0, 90, 180);
}

wxColour WarningColour() {
  return IsDark() ? wxColour(255, 150, 80) : wxColour(178, 60, 0);
}

wxColour StateColour(Image icon) {
  switch (icon) {
    case Image::BuildOk:
      return IsDark() ? wxColour(86, 211, 100) : wxColour(26, 127, 55);
    case Image::BuildError:
      return IsDark() ? wxColour(255, 154, 141) : wxColour(180, 35, 24);
    case Image::Building:
      return IsDark() ? wxColour(121, 192, 255) : wxColour(5, 80, 174);
    default:
      return IsDark() ? wxColour(177, 186, 196) : wxColour(87, 96, 106);
  }
}

wxColour TextOnStateColour() {
  return IsDark() ? wxColour(16, 20, 26) : *wxWHITE;
}

wxColour CriticalColour() {
  return IsDark() ? wxColour(106, 48, 192) : wxColour(255, 211, 61);
}

}  // namespace gorbex::ui
