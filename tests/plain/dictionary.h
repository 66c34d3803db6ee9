// A dictionary as a list that is searched from its start: what the one with tables must equal.
#ifndef RK_TESTS_PLAIN_DICTIONARY_H_
#define RK_TESTS_PLAIN_DICTIONARY_H_

#include <algorithm>
#include <string>
#include <vector>

#include "value/conversions.h"
#include "value/value.h"

namespace rk::plain {

class Dictionary {
 public:
  struct Entry {
    Value key;
    Value item;
  };
  using Place = std::vector<Entry>::iterator;

  // The end where it is not there.
  Place find(const Value& key) {
    return std::find_if(entries_.begin(), entries_.end(),
                        [&](const Entry& entry) { return same(entry.key, key); });
  }
  bool has(const Value& key) { return find(key) != entries_.end(); }
  void add(const Value& key, const Value& item) { entries_.push_back({key, item}); }
  void remove(Place place) { entries_.erase(place); }
  void clear() { entries_.clear(); }

  std::string keys() const { return joined(&Entry::key); }
  std::string items() const { return joined(&Entry::item); }

 private:
  static bool same(const Value& a, const Value& b) {
    if (a.is_text() || b.is_text()) {
      return a.is_text() && b.is_text() && a.as_view() == b.as_view();
    }
    if (a.is_empty() || a.is_null() || b.is_empty() || b.is_null()) return a.kind() == b.kind();
    return to_double(a) == to_double(b);
  }

  std::string joined(Value Entry::*part) const {
    std::string out;
    for (const Entry& entry : entries_) out += joined_text(entry.*part).string() + ",";
    return out;
  }

  std::vector<Entry> entries_;
};

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_DICTIONARY_H_
