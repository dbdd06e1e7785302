#include "ui/palette.h"

#include <wx/settings.h>

#include <cmath>

#include "ui/observe.h"

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

wxColour Rgb(std::uint32_t colour) {
  return {static_cast<unsigned char>(colour >> 16U), static_cast<unsigned char>(colour >> 8U),
          static_cast<unsigned char>(colour)};
}

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
  wxColour system = wxSystemSettings::GetColour(wxSYS_COLOUR_HOTLIGHT);
  const wxColour back = wxSystemSettings::GetColour(wxSYS_COLOUR_BTNFACE);
  if (std::abs(system.GetLuminance() - back.GetLuminance()) >= kLeast) return system;
  return IsDark() ? wxColour(110, 170, 255) : wxColour(0, 90, 180);
}

wxColour WarningColour() {
  return IsDark() ? wxColour(255, 150, 80) : wxColour(178, 60, 0);
}

void RefreshWithFocus(wxWindow& window) {
  for (const auto& focus : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS}) {
    Observe(window, focus, [&window] { window.Refresh(); });
  }
}

Scheme SchemeInUse() {
  return IsDark() ? Scheme::Dark : Scheme::Light;
}

wxColour CriticalColour() {
  return IsDark() ? wxColour(201, 166, 255) : wxColour(106, 48, 192);
}

}  // namespace gorbex::ui
