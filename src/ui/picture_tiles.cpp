#include "ui/picture_tiles.h"

#include <wx/dcmemory.h>

namespace gorbex::ui {
namespace {

constexpr int kTile = 256;
constexpr std::size_t kMostTiles = 160;

int TileAt(int pixel) {
  return pixel >= 0 ? pixel / kTile : -((kTile - 1 - pixel) / kTile);
}

/// Calls for each square that a part of the picture touches.
template <class Visit>
void ForEachTile(const wxRect& part, Visit visit) {
  for (int row = TileAt(part.GetTop()); row <= TileAt(part.GetBottom()); ++row) {
    for (int column = TileAt(part.GetLeft()); column <= TileAt(part.GetRight()); ++column) {
      visit(std::pair(column, row), wxRect(column * kTile, row * kTile, kTile, kTile));
    }
  }
}

}  // namespace

bool PictureTiles::Paint(wxDC& dc, const wxRect& part, const Draw& draw,
                         std::optional<std::chrono::milliseconds> limit) {
  const auto begin = std::chrono::steady_clock::now();
  bool isWhole = true;
  if (tiles_.size() > kMostTiles) Clear();
  if (!limit) DrawMissing(part, draw);
  ForEachTile(part, [&](const auto& number, const wxRect& place) {
    wxBitmap& tile = tiles_[number];
    const bool isLate = limit && std::chrono::steady_clock::now() - begin > *limit;
    if (!tile.IsOk() && !isLate) tile = Drawn(place, draw);
    isWhole = isWhole && tile.IsOk();
    if (tile.IsOk()) dc.DrawBitmap(tile, place.GetPosition() - part.GetPosition());
  });
  return isWhole;
}

void PictureTiles::DrawMissing(const wxRect& part, const Draw& draw) {
  wxRect all;
  ForEachTile(part, [&](const auto& number, const wxRect& place) {
    if (!tiles_[number].IsOk()) all.Union(place);
  });
  if (all.width <= kTile && all.height <= kTile) return;
  wxBitmap picture = Drawn(all, draw);
  wxMemoryDC from(picture);
  ForEachTile(all, [&](const auto& number, const wxRect& place) {
    const auto copy = [&](wxDC& dc, const wxRect&) {
      dc.Blit(wxPoint(), place.GetSize(), &from, place.GetPosition() - all.GetPosition());
    };
    if (!tiles_[number].IsOk()) tiles_[number] = Drawn(place, copy);
  });
}

wxBitmap PictureTiles::Drawn(const wxRect& part, const Draw& draw) const {
  wxBitmap tile;
  tile.CreateScaled(part.width, part.height, wxBITMAP_SCREEN_DEPTH,
                    window_.GetContentScaleFactor());
  wxMemoryDC dc(tile);
  draw(dc, part);
  dc.SelectObject(wxNullBitmap);
  return tile;
}

}  // namespace gorbex::ui
