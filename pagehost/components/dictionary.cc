#include "pagehost/components/dictionary.h"

#include <algorithm>
#include <bit>
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
Value plain_key(const Value& key) {
  if (!key.is_object() || key.as_object() == nullptr) return key;
  const std::string_view type = key.as_object()->type_name();
  const bool is_text = type == "IStringList" || type == "IReadCookie" || type == "Field";
  return is_text ? plain_value(key) : key;
}

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
std::size_t Dictionary::hash_of(const Value& key) const {
  switch (key.kind()) {
    case Value::Kind::String:
      if (compare_mode_ == 0) return std::hash<std::string_view>()(key.as_view());
      return std::hash<std::string>()(lower_case(key.as_view()));
    case Value::Kind::Object:
      return std::hash<const void*>()(key.as_object());
    case Value::Kind::Empty:
    case Value::Kind::Null:
      return 0;
    case Value::Kind::Array:
    case Value::Kind::Error:
      raise(errors::kInvalidCall);
    default:
      return std::hash<double>()(to_double(key));
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

std::size_t Dictionary::slot_of(const Value& key, std::size_t hash) const {
  // Numbers one after another have hashes that differ in few bits only: all of them are to count.
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
  constexpr unsigned kHighHalf = 32;
  const std::size_t mask = slots_.size() - 1;
  std::size_t at = static_cast<std::size_t>((hash * kSpread) >> kHighHalf) & mask;
  for (; slots_[at] != 0; at = (at + 1) & mask) {
    const Entry& there = entries_[slots_[at] - 1];
    if (!there.removed && there.hash == hash && same_key(there.key, key)) break;
  }
  return at;
}

Dictionary::Entry* Dictionary::find(const Value& key) {
  const std::size_t hash = hash_of(key);
  if (count_ == 0) return nullptr;
  const std::uint32_t place = slots_[slot_of(key, hash)];
  return place == 0 ? nullptr : &entries_[place - 1];
}

Dictionary::Entry& Dictionary::entry(const Value& key) {
  const std::size_t hash = hash_of(key);
  if (2 * (entries_.size() + 1) > slots_.size()) make_room();
  const std::size_t slot = slot_of(key, hash);
  if (slots_[slot] == 0) {
    entries_.push_back({key, Value(), hash, false});
    slots_[slot] = static_cast<std::uint32_t>(entries_.size());
    ++count_;
  }
  return entries_[slots_[slot] - 1];
}

// Forgets what was removed, and makes the table four times as large as what is left.
void Dictionary::make_room() {
  constexpr std::size_t kFewSlots = 16;
  std::erase_if(entries_, [](const Entry& entry) { return entry.removed; });
  const std::size_t size = std::bit_ceil(std::max(kFewSlots, 4 * (entries_.size() + 1)));
  slots_.assign(size, 0);
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    slots_[slot_of(entries_[i].key, entries_[i].hash)] = static_cast<std::uint32_t>(i + 1);
  }
}

Value Dictionary::item(const Call& call) {
  Entry& found = entry(plain_key(call.at(0)));
  if (!call.assigns()) return found.item;
  found.item = call.assigned_value();
  return {};
}

Value Dictionary::add(const Call& call) {
  const Value key = plain_key(call.at(0));
  if (find(key) != nullptr) raise(errors::kKeyInUse);
  entry(key).item = call.at(1);
  return {};
}

Value Dictionary::exists(const Call& call) {
  return Value::boolean(find(plain_key(call.at(0))) != nullptr);
}

// What the item's end runs (Class_Terminate) may look at this dictionary: it goes last.
Value Dictionary::remove(const Call& call) {
  Entry* const found = find(plain_key(call.at(0)));
  if (found == nullptr) raise(errors::kElementNotFound);
  const Entry gone = std::exchange(*found, Entry{.key = {}, .item = {}, .removed = true});
  --count_;
  return {};
}

Value Dictionary::remove_all(const Call&) {
  const std::vector<Entry> gone = std::exchange(entries_, {});
  slots_.clear();
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
  Entry* const found = find(plain_key(call.at(0)));
  if (found == nullptr) raise(errors::kElementNotFound);
  const Value fresh = plain_key(call.assigned());
  const Entry* const other = find(fresh);
  if (other != nullptr && other != found) raise(errors::kKeyInUse);
  found->hash = hash_of(fresh);
  found->key = fresh;
  if (other == nullptr) make_room();
  return {};
}

// Only while there are no keys, which would not be found any more.
Value Dictionary::compare_mode(const Call& call) {
  if (!call.assigns()) return Value::long_integer(compare_mode_);
  if (count_ != 0) raise(errors::kInvalidCall);
  compare_mode_ = to_long(call.assigned());
  return {};
}

}  // namespace rk::pagehost
