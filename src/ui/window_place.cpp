#include "ui/window_place.h"

#include <wx/display.h>

#include <algorithm>
#include <cmath>

namespace gorbex::ui {
namespace {

constexpr float kTwipsPerDip = 15;

// Stored numbers can be anything.
int Dips(float twips) {
  constexpr float kFarthest = 100000;
  const float dips = twips / kTwipsPerDip;
  return std::isfinite(dips)
             ? static_cast<int>(std::lround(std::clamp(dips, -kFarthest, kFarthest)))
             : 0;
}

float Twips(int dips) {
  return static_cast<float>(dips) * kTwipsPerDip;
}

// The part of the title bar that must be on a screen, so that the user can move the window.
bool CanBeMoved(const wxRect& window, const wxRect& screen) {
  constexpr int kHold = 60;
  constexpr int kTitleBar = 24;
  const wxRect seen = screen.Intersect({window.x, window.y, window.width, kTitleBar});
  return seen.width >= kHold && seen.height >= kTitleBar;
}

// The usable areas of all screens, the main screen first.
std::vector<wxRect> Screens() {
  std::vector<wxRect> screens;
  for (unsigned i = 0; i < wxDisplay::GetCount(); ++i) {
    const wxDisplay display(i);
    const auto at = display.IsPrimary() ? screens.begin() : screens.end();
    screens.insert(at, display.GetClientArea());
  }
  return screens;
}

}  // namespace

WindowPosition InTwips(const wxRect& dips) {
  return {Twips(dips.x), Twips(dips.y), Twips(dips.width), Twips(dips.height)};
}

wxRect InDips(const WindowPosition& twips) {
  return {Dips(twips.left), Dips(twips.top), Dips(twips.width), Dips(twips.height)};
}

wxRect OnSomeScreen(const wxRect& wanted, const std::vector<wxRect>& screens,
                    const wxSize& smallest) {
  wxRect window = wanted;
  window.width = std::max(window.width, smallest.x);
  window.height = std::max(window.height, smallest.y);
  const auto found = std::find_if(screens.begin(), screens.end(),
                                  [&](const wxRect& screen) { return CanBeMoved(window, screen); });
  wxRect all;
  for (const wxRect& screen : screens) all.Union(screen);
  if (found != screens.end()) {
    window.width = std::min(window.width, all.width);
    window.height = std::min(window.height, all.height);
  }
  if (found != screens.end() || screens.empty()) return window;
  return InTheMiddle(window.GetSize(), screens.front());
}

wxRect InTheMiddle(const wxSize& wanted, const wxRect& screen) {
  wxSize size = wanted;
  size.DecTo(screen.GetSize());
  return wxRect(size).CentreIn(screen);
}

WindowPosition PlaceOf(const wxTopLevelWindow& window) {
  return InTwips({window.ToDIP(window.GetPosition()), window.ToDIP(window.GetSize())});
}

void PutOnScreen(wxTopLevelWindow& window, const WindowPosition& place) {
  const wxRect dips = InDips(place);
  const wxRect wanted(window.FromDIP(dips.GetPosition()), window.FromDIP(dips.GetSize()));
  window.SetSize(OnSomeScreen(wanted, Screens(), window.GetMinSize()));
}

}  // namespace gorbex::ui
