#include "pagehost/components/dictionary.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <string>
#include <utility>

#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text_functions.h"

namespace rk::pagehost {
namespace {

class ValueWalk final : public Enumeration {
 public:
  explicit ValueWalk(std::vector<Value> values) : values_(std::move(values)) {}
  bool next(Value& item) override {
    if (at_ >= values_.size()) return false;
    item = values_[at_++];
    return true;
  }

 private:
  std::vector<Value> values_;
  std::size_t at_ = 0;
};

// What a request or a row gave is a key by its plain value; other objects are keys themselves.
class PlainKey {
 public:
  explicit PlainKey(const Value& key) : key_(&key) {
    if (!key.is_object() || key.as_object() == nullptr) return;
    const std::string_view type = key.as_object()->type_name();
    if (type != "IStringList" && type != "IReadCookie" && type != "Field") return;
    made_ = plain_value(key);
    key_ = &made_;
  }
  PlainKey(const PlainKey&) = delete;
  PlainKey& operator=(const PlainKey&) = delete;
  const Value& operator*() const { return *key_; }

 private:
  Value made_;
  const Value* key_;
};

bool is_number(const Value& key) {
  switch (key.kind()) {
    case Value::Kind::Empty:
    case Value::Kind::Null:
    case Value::Kind::String:
    case Value::Kind::Object:
    case Value::Kind::Array:
    case Value::Kind::Error:
      return false;
    default:
      return true;
  }
}

std::optional<std::int64_t> whole_number(double number) {
  // Beyond it not every whole number has a Double of its own, so counting would go astray.
  constexpr double kMostCounted = 9007199254740992.0;
  if (!(std::abs(number) < kMostCounted) || number != std::trunc(number)) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

std::optional<std::int64_t> whole_number(const Value& key) {
  if (key.kind() == Value::Kind::Long) return key.as_long();
  if (key.kind() == Value::Kind::Integer) return key.as_integer();
  return is_number(key) ? whole_number(to_double(key)) : std::nullopt;
}

// All bits of a hash count, and numbers one after another differ in few of them only.
std::uint32_t spread(std::uint64_t hash) {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
  constexpr unsigned kHighHalf = 32;
  return static_cast<std::uint32_t>(hash * kSpread >> kHighHalf);
}

}  // namespace

std::span<const Member<Dictionary>> Dictionary::members() {
  using D = Dictionary;
  static constexpr Member<D> kMembers[] = {
      {"Item", &D::item, 1, 1, Access::Both},
      {"Add", &D::add, 2, 2},
      {"Exists", &D::exists, 1, 1},
      {"Remove", &D::remove, 1, 1},
      {"RemoveAll", &D::remove_all},
      {"Count", &D::count},
      {"Keys", &D::keys},
      {"Items", &D::items},
      {"Key", &D::key, 1, 1, Access::Write},
      {"CompareMode", &D::compare_mode, 0, 0, Access::Both},
  };
  return kMembers;
}

std::unique_ptr<Enumeration> Dictionary::enumerate() {
  return std::make_unique<ValueWalk>(listed(&Entry::key));
}

void Dictionary::add_held(rk::HeldMemory& held) const {
  held.bytes += entries_.capacity() * sizeof(Entry) + slots_.capacity() * sizeof(std::uint32_t);
  for (const Entry& entry : entries_) {
    held.values.push_back(&entry.key);
    held.values.push_back(&entry.item);
  }
}

// Equal keys have equal hashes: numbers by their value whatever their width, objects by identity.
std::uint32_t Dictionary::hash_of(const Value& key) const {
  switch (key.kind()) {
    case Value::Kind::String:
      if (compare_mode_ == 0) return spread(std::hash<std::string_view>()(key.as_view()));
      return spread(std::hash<std::string>()(lower_case(key.as_view())));
    case Value::Kind::Object:
      return spread(std::hash<const void*>()(key.as_object()));
    case Value::Kind::Empty:
    case Value::Kind::Null:
      return 0;
    case Value::Kind::Array:
    case Value::Kind::Error:
      raise(errors::kInvalidCall);
    default:
      if (const auto whole = whole_number(key)) return spread(static_cast<std::uint64_t>(*whole));
      return spread(std::hash<double>()(to_double(key)));
  }
}

bool Dictionary::same_key(const Value& a, const Value& b) const {
  if (is_number(a) || is_number(b)) {
    return is_number(a) && is_number(b) && to_double(a) == to_double(b);
  }
  if (a.kind() != b.kind()) return false;
  if (!a.is_text()) return a.is_same(b);
  if (compare_mode_ == 0) return a.as_view() == b.as_view();
  return lower_case(a.as_view()) == lower_case(b.as_view());
}

std::size_t Dictionary::slot_of(const Value& key, std::uint32_t hash) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = hash & mask;
  for (; slots_[at] != 0; at = (at + 1) & mask) {
    const Entry& there = entries_[slots_[at] - 1];
    if (!there.removed && there.hash == hash && same_key(there.key, key)) break;
  }
  return at;
}

std::optional<std::size_t> Dictionary::counted_place(const Value& key) const {
  const auto whole = whole_number(key);
  if (!whole) return std::nullopt;
  if (entries_.empty()) return 0;
  const auto distance = static_cast<std::uint64_t>(*whole - first_key_);
  if (distance > entries_.size()) return std::nullopt;
  return static_cast<std::size_t>(distance);
}

Dictionary::Entry* Dictionary::find(const Value& key) {
  if (counts_up_) {
    const auto place = counted_place(key);
    if (place && *place < entries_.size()) return &entries_[*place];
  }
  const std::uint32_t hash = hash_of(key);  // which refuses what can be no key
  if (counts_up_ || count_ == 0) return nullptr;
  const std::uint32_t place = slots_[slot_of(key, hash)];
  return place == 0 ? nullptr : &entries_[place - 1];
}

Dictionary::Entry& Dictionary::entry(const Value& key) {
  if (counts_up_) {
    if (const auto place = counted_place(key)) {
      if (*place < entries_.size()) return entries_[*place];
      if (entries_.empty()) first_key_ = *whole_number(key);
      ++count_;
      entries_.push_back({key, Value()});
      return entries_.back();
    }
  }
  const std::uint32_t hash = hash_of(key);
  if (counts_up_ || 2 * (entries_.size() + 1) > slots_.size()) make_table();
  const std::size_t slot = slot_of(key, hash);
  if (slots_[slot] == 0) {
    entries_.push_back({key, Value(), hash, false});
    slots_[slot] = static_cast<std::uint32_t>(entries_.size());
    ++count_;
  }
  return entries_[slots_[slot] - 1];
}

// Forgets what was removed, and makes the table four times as large as what is left.
void Dictionary::make_table() {
  constexpr std::size_t kFewSlots = 16;
  std::erase_if(entries_, [](const Entry& entry) { return entry.removed; });
  const std::size_t size = std::bit_ceil(std::max(kFewSlots, 4 * (entries_.size() + 1)));
  slots_.assign(size, 0);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    Entry& entry = entries_[i];
    if (counts_up_) entry.hash = hash_of(entry.key);
    slots_[slot_of(entry.key, entry.hash)] = static_cast<std::uint32_t>(i + 1);
  }
  counts_up_ = false;
}

// What is assigned comes first: its default member may run script that changes this dictionary.
Value Dictionary::item(const Call& call) {
  const PlainKey key(call.at(0));
  if (!call.assigns()) return entry(*key).item;
  Value assigned = call.assigned_value();
  entry(*key).item = std::move(assigned);
  return {};
}

Value Dictionary::add(const Call& call) {
  const PlainKey key(call.at(0));
  const std::size_t before = count_;
  Entry& made = entry(*key);
  if (count_ == before) raise(errors::kKeyInUse);
  made.item = call.at(1);
  return {};
}

Value Dictionary::exists(const Call& call) {
  return Value::boolean(find(*PlainKey(call.at(0))) != nullptr);
}

// What the item's end runs (Class_Terminate) may look at this dictionary: it goes last.
Value Dictionary::remove(const Call& call) {
  const PlainKey key(call.at(0));
  if (find(*key) == nullptr) raise(errors::kElementNotFound);
  if (counts_up_) make_table();
  const Entry gone = std::exchange(*find(*key), Entry{.key = {}, .item = {}, .removed = true});
  --count_;
  return {};
}

Value Dictionary::remove_all(const Call&) {
  const std::vector<Entry> gone = std::exchange(entries_, {});
  slots_.clear();
  counts_up_ = true;
  count_ = 0;
  return {};
}

Value Dictionary::count(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(count_));
}

std::vector<Value> Dictionary::listed(Value Entry::*part) const {
  std::vector<Value> out;
  out.reserve(count_);
  for (const Entry& entry : entries_) {
    if (!entry.removed) out.push_back(entry.*part);
  }
  return out;
}

Value Dictionary::keys(const Call&) {
  return Value::array(Array::of(listed(&Entry::key)));
}

Value Dictionary::items(const Call&) {
  return Value::array(Array::of(listed(&Entry::item)));
}

// d.Key(old) = new. The table is made anew: its slots go by the keys.
Value Dictionary::key(const Call& call) {
  const PlainKey old(call.at(0));
  const PlainKey fresh(call.assigned());
  if (find(*old) == nullptr) raise(errors::kElementNotFound);
  const std::uint32_t hash = hash_of(*fresh);
  if (counts_up_) make_table();
  Entry* const found = find(*old);
  const Entry* const other = find(*fresh);
  if (other != nullptr && other != found) raise(errors::kKeyInUse);
  found->hash = hash;
  const Value gone = std::exchange(found->key, *fresh);  // goes last: its end may run script
  if (other == nullptr) make_table();
  return {};
}

// Only while there are no keys, which would not be found any more.
Value Dictionary::compare_mode(const Call& call) {
  if (!call.assigns()) return Value::long_integer(compare_mode_);
  const std::int32_t mode = to_long(call.assigned());
  if (count_ != 0) raise(errors::kInvalidCall);
  compare_mode_ = mode;
  return {};
}

}  // namespace rk::pagehost
