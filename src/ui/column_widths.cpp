#include "ui/column_widths.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <numeric>

namespace gorbex::ui {
namespace {

// The rest after every column, those worth most first, got what it needs to be read.
int GiveLeast(int rest, const std::vector<ColumnNeed>& needs, std::vector<int>& widths) {
  std::vector<std::size_t> order(needs.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, std::greater(), [&](std::size_t i) { return needs[i].worth; });
  for (const std::size_t column : order) {
    const int more = std::clamp(needs[column].least - widths[column], 0, std::max(rest, 0));
    widths[column] += more;
    rest -= more;
  }
  return rest;
}

// A column that has enough leaves its share to the others.
int GiveWanted(int rest, const std::vector<ColumnNeed>& needs, std::vector<int>& widths) {
  while (rest > 0) {
    int worth = 0;
    for (std::size_t i = 0; i < needs.size(); ++i) {
      if (widths[i] < needs[i].wanted) worth += needs[i].worth;
    }
    if (worth == 0) return rest;
    const int before = rest;
    for (std::size_t i = 0; i < needs.size(); ++i) {
      const int share = std::max(1, before * needs[i].worth / worth);
      const int more = std::clamp(needs[i].wanted - widths[i], 0, std::min(share, rest));
      widths[i] += more;
      rest -= more;
    }
  }
  return rest;
}

void GiveRest(int rest, const std::vector<ColumnNeed>& needs, std::vector<int>& widths) {
  if (rest <= 0) return;
  int all = 0;
  for (std::size_t i = 0; i < needs.size(); ++i) all += needs[i].grows ? widths[i] : 0;
  for (std::size_t i = 0; i < needs.size() && all > 0; ++i) {
    if (!needs[i].grows) continue;
    const int more = rest * widths[i] / all;
    all -= widths[i];
    rest -= more;
    widths[i] += more;
  }
}

}  // namespace

std::vector<int> ColumnWidthsFor(int room, const std::vector<ColumnNeed>& needs) {
  std::vector<int> widths;
  widths.reserve(needs.size());
  for (const ColumnNeed& need : needs) widths.push_back(need.bare);
  const int rest =
      GiveLeast(room - std::accumulate(widths.begin(), widths.end(), 0), needs, widths);
  GiveRest(GiveWanted(rest, needs, widths), needs, widths);
  return widths;
}

}  // namespace gorbex::ui
