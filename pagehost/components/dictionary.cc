#include "pagehost/components/dictionary.h"

#include <utility>

#include "value/array.h"
#include "value/conversions.h"
#include "value/script_error.h"
#include "value/text.h"

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
  return std::make_unique<ValueWalk>(key_list());
}

// Equal keys have equal names: numbers by their value whatever their width, objects by identity.
std::string Dictionary::name_of(const Value& key) const {
  switch (key.kind()) {
    case Value::Kind::String:
      return "s" + (compare_mode_ == 0 ? std::string(key.as_view()) : lowered_ascii(key.as_view()));
    case Value::Kind::Object:
      return "o" + std::to_string(reinterpret_cast<std::uintptr_t>(key.as_object()));
    case Value::Kind::Empty:
      return "e";
    case Value::Kind::Null:
      return "n";
    case Value::Kind::Array:
    case Value::Kind::Error:
      raise(errors::kInvalidCall);
    default:
      return "d" + number_text(to_double(key));
  }
}

Dictionary::Entry& Dictionary::entry(const Value& key) {
  const auto [place, fresh] = places_.try_emplace(name_of(key), came_);
  if (fresh) entries_[came_++].key = key;
  return entries_[place->second];
}

Value Dictionary::item(const Call& call) {
  Entry& found = entry(plain_key(call.at(0)));
  if (!call.assigns()) return found.item;
  found.item = call.assigned_value();
  return {};
}

Value Dictionary::add(const Call& call) {
  const Value key = plain_key(call.at(0));
  if (places_.contains(name_of(key))) raise(errors::kKeyInUse);
  entry(key).item = call.at(1);
  return {};
}

Value Dictionary::exists(const Call& call) {
  return Value::boolean(places_.contains(name_of(plain_key(call.at(0)))));
}

Value Dictionary::remove(const Call& call) {
  const auto place = places_.find(name_of(plain_key(call.at(0))));
  if (place == places_.end()) raise(errors::kElementNotFound);
  entries_.erase(place->second);
  places_.erase(place);
  return {};
}

Value Dictionary::remove_all(const Call&) {
  entries_.clear();
  places_.clear();
  return {};
}

Value Dictionary::count(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(entries_.size()));
}

std::vector<Value> Dictionary::key_list() const {
  std::vector<Value> out;
  out.reserve(entries_.size());
  for (const auto& [place, entry] : entries_) out.push_back(entry.key);
  return out;
}

Value Dictionary::keys(const Call&) {
  return Value::array(Array::of(key_list()));
}

Value Dictionary::items(const Call&) {
  std::vector<Value> out;
  out.reserve(entries_.size());
  for (const auto& [place, entry] : entries_) out.push_back(entry.item);
  return Value::array(Array::of(std::move(out)));
}

// d.Key(old) = new
Value Dictionary::key(const Call& call) {
  const auto place = places_.find(name_of(plain_key(call.at(0))));
  if (place == places_.end()) raise(errors::kElementNotFound);
  const Value fresh = plain_key(call.assigned());
  const std::string name = name_of(fresh);
  if (name == place->first) return {};
  if (places_.contains(name)) raise(errors::kKeyInUse);
  const std::uint64_t at = place->second;
  places_.erase(place);
  places_.emplace(name, at);
  entries_[at].key = fresh;
  return {};
}

// Only while there are no keys, which would not be found any more.
Value Dictionary::compare_mode(const Call& call) {
  if (!call.assigns()) return Value::long_integer(compare_mode_);
  if (!entries_.empty()) raise(errors::kInvalidCall);
  compare_mode_ = to_long(call.assigned());
  return {};
}

}  // namespace rk::pagehost
