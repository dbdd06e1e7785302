#include "ui/layout_store.h"

#include <algorithm>

#include "app/stored_position.h"
#include "core/text.h"

namespace gorbex::ui {

std::vector<int> LayoutStore::Read(const std::string& part, std::size_t count) const {
  constexpr int kLargest = 20000;
  std::vector<int> sizes;
  try {
    const std::string stored = registry_.fnsGetRegistryValue(kPositionKey, part);
    for (const auto field : Split(stored, ',')) sizes.push_back(ToLong(NumericValue(field)));
  } catch (const RuntimeError&) {
    return {};
  }
  const bool areSizes = std::all_of(sizes.begin(), sizes.end(),
                                    [](int size) { return size > 0 && size <= kLargest; });
  return areSizes && sizes.size() == count ? sizes : std::vector<int>();
}

void LayoutStore::Write(const std::string& part, const std::vector<int>& sizes) {
  std::string text;
  for (const int size : sizes) text.append(text.empty() ? "" : ",").append(std::to_string(size));
  registry_.subSetRegistryValue(kPositionKey, part, text);
}

}  // namespace gorbex::ui
