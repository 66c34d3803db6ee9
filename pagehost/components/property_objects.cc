#include "pagehost/components/property_objects.h"

#include <cstddef>
#include <span>
#include <utility>

#include "pagehost/components/ado_values.h"
#include "value/text.h"

namespace rk::pagehost {
namespace {

class PropertyObject final : public TabledObject<PropertyObject> {
 public:
  PropertyObject(std::shared_ptr<PropertyList> list, std::size_t place)
      : list_(std::move(list)), place_(place) {}
  std::string_view type_name() const override { return "Property"; }
  static std::span<const Member<PropertyObject>> members() {
    using P = PropertyObject;
    static constexpr Member<P> kMembers[] = {
        {"Value", &P::value, 0, 0, Access::Both},
        {"Name", &P::name},
        {"Type", &P::type},
        {"Attributes", &P::attributes, 0, 0, Access::Both},
    };
    return kMembers;
  }

 private:
  Property& property() const { return (*list_)[place_]; }
  Value value(const Call& call) {
    if (!call.assigns()) return property().value;
    property().value = plain_value(call.assigned());
    return {};
  }
  Value name(const Call&) { return Value::text(property().name); }
  Value type(const Call&) {
    return Value::long_integer(static_cast<std::int32_t>(ado_type_of(property().value)));
  }
  Value attributes(const Call& call) {
    constexpr std::int32_t kReadAndWritten = 0x200 | 0x400 | 0x800;
    return call.assigns() ? Value() : Value::long_integer(kReadAndWritten);
  }

  std::shared_ptr<PropertyList> list_;
  std::size_t place_;
};

class PropertyWalk final : public Enumeration {
 public:
  explicit PropertyWalk(std::shared_ptr<PropertyList> list) : list_(std::move(list)) {}
  bool next(Value& item) override {
    if (at_ >= list_->size()) return false;
    item = Value::object(make_ref<PropertyObject>(list_, at_++));
    return true;
  }

 private:
  std::shared_ptr<PropertyList> list_;
  std::size_t at_ = 0;
};

class PropertiesObject final : public TabledObject<PropertiesObject> {
 public:
  explicit PropertiesObject(std::shared_ptr<PropertyList> list) : list_(std::move(list)) {}
  std::string_view type_name() const override { return "Properties"; }
  static std::span<const Member<PropertiesObject>> members() {
    using P = PropertiesObject;
    static constexpr Member<P> kMembers[] = {
        {"Item", &P::item, 1, 1, Access::Both},
        {"Count", &P::count},
        {"Refresh", &P::refresh},
    };
    return kMembers;
  }
  std::unique_ptr<Enumeration> enumerate() override {
    return std::make_unique<PropertyWalk>(list_);
  }

 private:
  std::size_t place_of(const Value& index) const {
    if (index.is_text()) {
      const Property* found = property_named(*list_, index.as_view());
      if (found == nullptr) raise(errors::kItemNotFound);
      return static_cast<std::size_t>(found - list_->data());
    }
    const std::int32_t place = to_long(index);
    if (place < 0 || static_cast<std::size_t>(place) >= list_->size()) {
      raise(errors::kItemNotFound);
    }
    return static_cast<std::size_t>(place);
  }
  Value item(const Call& call) {
    const std::size_t place = place_of(plain_value(call.at(0)));
    if (!call.assigns()) return Value::object(make_ref<PropertyObject>(list_, place));
    (*list_)[place].value = plain_value(call.assigned());
    return {};
  }
  Value count(const Call&) { return Value::long_integer(static_cast<std::int32_t>(list_->size())); }
  Value refresh(const Call&) { return {}; }

  std::shared_ptr<PropertyList> list_;
};

}  // namespace

Property* property_named(PropertyList& list, std::string_view name) {
  for (Property& each : list) {
    if (equal_ignoring_case(each.name, name)) return &each;
  }
  return nullptr;
}

Value properties_member(const std::shared_ptr<PropertyList>& list, const Call& call) {
  auto found = make_ref<PropertiesObject>(list);
  if (call.arguments().empty()) return Value::object(found);
  return found->invoke(kDefaultMember, call.kind(), call.arguments());
}

}  // namespace rk::pagehost
