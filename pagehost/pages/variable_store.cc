#include "pagehost/pages/variable_store.h"

#include <utility>

namespace rk::pagehost {

const Value* VariableStore::find(std::string_view name) const {
  const auto place = places_.find(name);
  return place == places_.end() ? nullptr : &variables_[place->second].value;
}

void VariableStore::set(std::string_view name, Value value) {
  const auto place = places_.find(name);
  if (place != places_.end()) {
    variables_[place->second].value = std::move(value);
    return;
  }
  places_.emplace(std::string(name), variables_.size());
  variables_.push_back({std::string(name), std::move(value)});
}

void VariableStore::remove(std::string_view name) {
  const auto place = places_.find(name);
  if (place == places_.end()) return;
  const std::size_t gone = place->second;
  places_.erase(place);
  variables_.erase(variables_.begin() + static_cast<std::ptrdiff_t>(gone));
  for (auto& [key, at] : places_) {
    if (at > gone) --at;
  }
}

void VariableStore::clear() {
  places_.clear();
  variables_.clear();
}

}  // namespace rk::pagehost
