#include "analysis/queue_arrangement.h"

#include <algorithm>
#include <string>

#include "tests/fuzz/target.h"

namespace gorbex::test {
namespace {

/// The rounds as one would do them by hand, with nothing to make them fast.
class PlainArrangement {
 public:
  explicit PlainArrangement(const std::vector<std::size_t>& dependencies, std::vector<bool> linked)
      : dependencies_(dependencies), linked_(std::move(linked)) {
    for (std::size_t i = 0; i < dependencies.size(); ++i) order_.push_back(i);
  }

  const std::vector<std::size_t>& Run(std::size_t rounds) {
    for (; rounds > 0; --rounds) {
      for (const auto row : order_) linked_[row] = linked_[row] || Has(dependencies_[row]);
      for (std::size_t place = 0; place < order_.size(); ++place) {
        if (linked_[order_[place]]) place = Move(place);
      }
    }
    return order_;
  }

 private:
  [[nodiscard]] bool Has(std::size_t row) const {
    return std::find(order_.begin(), order_.end(), row) != order_.end();
  }

  // Returns the place after which the scan continues.
  std::size_t Move(std::size_t place) {
    const auto row = order_[place];
    const bool append = order_.size() < 3;
    order_.erase(order_.begin() + static_cast<std::ptrdiff_t>(place));
    linked_[row] = false;
    const auto upper = std::find(order_.begin(), order_.end(), dependencies_[row]);
    if (!append && upper == order_.end()) return place;
    const auto added = order_.insert(append ? order_.end() : upper + 1, row);
    return static_cast<std::size_t>(added - order_.begin());
  }

  std::vector<std::size_t> dependencies_;
  std::vector<bool> linked_;
  std::vector<std::size_t> order_;
};

}  // namespace

// Each byte is a row: the one it depends on, and whether it was linked before.
void ReadInput(std::string_view input) {
  const auto bytes = input.substr(0, 24);
  std::vector<std::string> names;
  for (std::size_t i = 0; i < 32; ++i) names.push_back(std::to_string(i));
  std::vector<std::size_t> dependencies;
  std::vector<bool> linked;
  std::vector<QueueArrangement::Row> rows;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    dependencies.push_back(value % 32U);
    linked.push_back(value >= 224);
    rows.push_back({names[rows.size()], names[value % 32U], value >= 224});
  }
  QueueArrangement arrangement(rows);
  std::size_t lost = 0;
  arrangement.Run([&](std::size_t) { ++lost; });
  Require(arrangement.Order().size() + lost == rows.size(), "each row is kept or lost");
  const std::vector<std::size_t> order(arrangement.Order().begin(), arrangement.Order().end());
  Require(order == PlainArrangement(dependencies, linked).Run(rows.size()),
          "the order is that of the plain rounds");
}

}  // namespace gorbex::test
