#include "ui/icons.h"

#include <algorithm>

#include "ui/embedded_files.h"

namespace gorbex::ui {

wxBitmapBundle Icon(std::string_view name, int size) {
  const auto source = EmbeddedFile(name);
  if (source.empty()) return {};
  return wxBitmapBundle::FromSVG(reinterpret_cast<const wxByte*>(source.data()), source.size(),
                                 wxSize(size, size));
}

int IconSize(const wxWindow& window) {
  constexpr int kUsual = 16;
  constexpr int kUsualText = 18;
  return std::max(kUsual, window.ToDIP(window.GetCharHeight()) * kUsual / kUsualText);
}

wxIconBundle ProgramIcons() {
  wxIconBundle icons;
  const auto icon = Icon("gorbexbuilder", 64);
  for (const int size : {16, 20, 24, 32, 48, 64}) {
    wxIcon sized;
    sized.CopyFromBitmap(icon.GetBitmap(wxSize(size, size)));
    icons.AddIcon(sized);
  }
  return icons;
}

wxVector<wxBitmapBundle> RowIcons(int size) {
  constexpr auto kImages = static_cast<std::size_t>(Image::UpToDate) + 1;
  wxVector<wxBitmapBundle> icons;
  for (std::size_t image = 0; image < kImages; ++image) {
    const auto icon = Icon(ImageKey(static_cast<Image>(image)), size);
    // Every index needs a picture; what has none is an empty one.
    icons.push_back(icon.IsOk() ? icon : wxBitmapBundle::FromImage(wxImage(size, size)));
  }
  return icons;
}

}  // namespace gorbex::ui
