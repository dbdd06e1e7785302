#pragma once

#include <cstddef>
#include <vector>

namespace gorbex {

/// Here means the selection if it is a hit, else the next hit.
enum class SearchDirection { Next, Previous, Here };

/// The number of a hit, from 1, and of how many; 0 of 0 when there is none.
struct SearchHit {
  std::size_t number = 0;
  std::size_t of = 0;
};

/// The hits of a search in their order, and where among them the selection is.
template <class Item>
class SearchHits {
 public:
  explicit SearchHits(const Item* selected) : selected_(selected) {}

  void Look(Item& item, bool isHit) {
    if (&item == selected_) before_ = items_.size();
    if (isHit) items_.push_back(&item);
    if (&item == selected_) after_ = items_.size();
  }

  /// The hit in a direction; the first follows the last.
  [[nodiscard]] SearchHit Hit(SearchDirection direction) const {
    const std::size_t count = items_.size();
    if (count == 0) return {};
    if (direction == SearchDirection::Next) return {after_ % count + 1, count};
    if (direction == SearchDirection::Here) return {before_ % count + 1, count};
    return {(before_ + count - 1) % count + 1, count};
  }

  [[nodiscard]] Item& At(const SearchHit& hit) const { return *items_[hit.number - 1]; }

 private:
  const Item* selected_;
  std::vector<Item*> items_;
  std::size_t before_ = 0;  ///< hits before the selection
  std::size_t after_ = 0;   ///< hits up to it
};

}  // namespace gorbex
