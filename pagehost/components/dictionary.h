// Dictionary (Scripting.Dictionary): values by keys of any plain kind, in the order in which the
// keys came. Texts are keys by their letters, or without letter case where CompareMode says so.
#ifndef RK_PAGEHOST_COMPONENTS_DICTIONARY_H_
#define RK_PAGEHOST_COMPONENTS_DICTIONARY_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "pagehost/pages/tabled_object.h"

namespace rk::pagehost {

class Dictionary final : public TabledObject<Dictionary> {
 public:
  std::string_view type_name() const override { return "Dictionary"; }
  static std::span<const Member<Dictionary>> members();
  std::unique_ptr<Enumeration> enumerate() override;  // the keys
  void add_held(rk::HeldMemory& held) const override;

 private:
  struct Entry {
    Value key;
    Value item;
    std::uint32_t hash = 0;  // not known while the keys count up
    bool removed = false;
  };

  Value item(const Call& call);
  Value add(const Call& call);
  Value exists(const Call& call);
  Value remove(const Call& call);
  Value remove_all(const Call& call);
  Value count(const Call& call);
  Value keys(const Call& call);
  Value items(const Call& call);
  Value key(const Call& call);
  Value compare_mode(const Call& call);

  std::uint32_t hash_of(const Value& key) const;
  bool same_key(const Value& a, const Value& b) const;
  // The slot of a key, or the free one where it would go.
  std::size_t slot_of(const Value& key, std::uint32_t hash) const;
  // Where in entries_ a key that counts up with them stands, or would stand next.
  std::optional<std::size_t> counted_place(const Value& key) const;
  Entry* find(const Value& key);
  Entry& entry(const Value& key);  // made where it is not there
  void make_table();
  std::vector<Value> listed(Value Entry::*part) const;

  // In the order of their coming; what was removed stays until make_table.
  std::vector<Entry> entries_;
  // OPTIMIZATION: an open table of places in entries_ plus one, at most half full; 0 is free. The
  // slots of removed entries stay taken, so that searches go on behind them.
  std::vector<std::uint32_t> slots_;
  // OPTIMIZATION: whole numbers that came in counting order, none of them removed, are found by
  // their distance from the first one. There is no table then.
  bool counts_up_ = true;
  std::int64_t first_key_ = 0;
  std::size_t count_ = 0;          // entries that are not removed
  std::int32_t compare_mode_ = 0;  // 0 by letters, 1 without letter case
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_DICTIONARY_H_
