// A bounded map from texts to values that forgets what was not used for the longest time.
// Thread rule: one thread at a time.
#ifndef RK_ADAPTERS_SQLITE_LRU_H_
#define RK_ADAPTERS_SQLITE_LRU_H_

#include <cstddef>
#include <list>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace rk::sqlite {

template <class T>
class Lru {
 public:
  explicit Lru(std::size_t bound) : bound_(bound) {}

  // Null where the key is not kept. The pointer holds until the next put() or clear().
  T* find(std::string_view key) {
    const auto found = places_.find(key);
    if (found == places_.end()) return nullptr;
    if (found->second != entries_.begin()) {
      entries_.splice(entries_.begin(), entries_, found->second);
    }
    return &found->second->second;
  }

  // The key must not be kept yet.
  T* put(std::string key, T value) {
    if (entries_.size() >= bound_) {
      places_.erase(std::string_view(entries_.back().first));
      entries_.pop_back();
    }
    entries_.emplace_front(std::move(key), std::move(value));
    places_.emplace(std::string_view(entries_.front().first), entries_.begin());
    return &entries_.front().second;
  }

  void clear() {
    places_.clear();
    entries_.clear();
  }

  std::size_t size() const noexcept { return entries_.size(); }

 private:
  using Entries = std::list<std::pair<std::string, T>>;

  std::size_t bound_;
  Entries entries_;  // the last used first
  std::unordered_map<std::string_view, typename Entries::iterator> places_;
};

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_LRU_H_
