#include "ui/picture_tiles.h"

#include <wx/dcmemory.h>

namespace gorbex::ui {
namespace {

constexpr int kTile = 256;
constexpr std::size_t kMostTiles = 160;

int TileAt(int pixel) {
  return pixel >= 0 ? pixel / kTile : -((kTile - 1 - pixel) / kTile);
}

}  // namespace

bool PictureTiles::Paint(wxDC& dc, const wxRect& part, const Draw& draw,
                         std::optional<std::chrono::milliseconds> limit) {
  const auto begin = std::chrono::steady_clock::now();
  bool isWhole = true;
  if (tiles_.size() > kMostTiles) Clear();
  for (int row = TileAt(part.GetTop()); row <= TileAt(part.GetBottom()); ++row) {
    for (int column = TileAt(part.GetLeft()); column <= TileAt(part.GetRight()); ++column) {
      const wxRect place(column * kTile, row * kTile, kTile, kTile);
      wxBitmap& tile = tiles_[{column, row}];
      const bool isLate = limit && std::chrono::steady_clock::now() - begin > *limit;
      if (!tile.IsOk() && !isLate) tile = Drawn(place, draw);
      isWhole = isWhole && tile.IsOk();
      if (tile.IsOk()) dc.DrawBitmap(tile, place.GetPosition() - part.GetPosition());
    }
  }
  return isWhole;
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
