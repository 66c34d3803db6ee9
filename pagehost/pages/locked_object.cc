#include "pagehost/pages/locked_object.h"

#include <cstddef>
#include <vector>

namespace rk::pagehost {
namespace {

// What the collection held when the walk began.
class SnapshotWalk final : public Enumeration {
 public:
  explicit SnapshotWalk(std::vector<Value> items) : items_(std::move(items)) {}
  bool next(Value& item) override {
    if (at_ >= items_.size()) return false;
    item = items_[at_++];
    return true;
  }

 private:
  std::vector<Value> items_;
  std::size_t at_ = 0;
};

}  // namespace

std::unique_ptr<Enumeration> LockedObject::enumerate() {
  const std::lock_guard held(mutex_);
  std::vector<Value> items;
  const auto walk = inner_->enumerate();
  for (Value item; walk->next(item);) {
    item.share();
    items.push_back(item);
  }
  return std::make_unique<SnapshotWalk>(std::move(items));
}

}  // namespace rk::pagehost
