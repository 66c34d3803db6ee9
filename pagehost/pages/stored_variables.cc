#include "pagehost/pages/stored_variables.h"

#include <cstddef>
#include <utility>

#include "value/script_error.h"

namespace rk::pagehost {
namespace {

class NameWalk final : public Enumeration {
 public:
  explicit NameWalk(std::vector<std::string> names) : names_(std::move(names)) {}
  bool next(Value& item) override {
    if (at_ >= names_.size()) return false;
    item = Value::text(names_[at_++]);
    return true;
  }

 private:
  std::vector<std::string> names_;
  std::size_t at_ = 0;
};

}  // namespace

std::unique_ptr<Enumeration> walk_over(std::vector<std::string> names) {
  return std::make_unique<NameWalk>(std::move(names));
}

Value variable_item(StoredVariables& variables, const Call& call) {
  const std::string name = call.text(0);
  if (!call.assigns()) return variables.stored(name);
  variables.store(name, call.assigned_value());
  return {};
}

std::span<const Member<ContentsObject>> ContentsObject::members() {
  using C = ContentsObject;
  static constexpr Member<C> kMembers[] = {
      {"Item", &C::item, 1, 1, Access::Both}, {"Count", &C::count},          {"Key", &C::key, 1, 1},
      {"Remove", &C::remove, 1, 1},           {"RemoveAll", &C::remove_all},
  };
  return kMembers;
}

std::unique_ptr<Enumeration> ContentsObject::enumerate() {
  return walk_over(variables_->names());
}

Value ContentsObject::item(const Call& call) {
  const std::string name = name_of(call.at(0));
  if (!call.assigns()) return variables_->stored(name);
  variables_->store(name, call.assigned_value());
  return {};
}

Value ContentsObject::count(const Call&) {
  return Value::long_integer(static_cast<std::int32_t>(variables_->names().size()));
}

Value ContentsObject::key(const Call& call) {
  return Value::text(name_of(call.at(0)));
}

Value ContentsObject::remove(const Call& call) {
  variables_->remove(name_of(call.at(0)));
  return {};
}

Value ContentsObject::remove_all(const Call&) {
  variables_->clear();
  return {};
}

// By name, or by place from 1.
std::string ContentsObject::name_of(const Value& index) {
  const Value plain = plain_value(index);
  if (plain.is_text()) return std::string(plain.as_view());
  const std::vector<std::string> names = variables_->names();
  const std::int32_t place = to_long(plain);
  if (place < 1 || static_cast<std::size_t>(place) > names.size()) {
    raise(errors::kSubscriptOutOfRange);
  }
  return names[static_cast<std::size_t>(place) - 1];
}

}  // namespace rk::pagehost
