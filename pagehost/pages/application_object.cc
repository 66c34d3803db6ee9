#include "pagehost/pages/application_object.h"

#include <string>
#include <utility>
#include <vector>

namespace rk::pagehost {
namespace {

class ApplicationVariables final : public StoredVariables {
 public:
  explicit ApplicationVariables(std::shared_ptr<ApplicationView> application)
      : application_(std::move(application)) {}
  Value stored(std::string_view name) override { return application_->value(name); }
  void store(std::string_view name, Value value) override {
    application_->set_value(name, std::move(value));
  }
  void remove(std::string_view name) override { application_->remove(name); }
  void clear() override { application_->clear(); }
  std::vector<std::string> names() override { return application_->names(); }

 private:
  std::shared_ptr<ApplicationView> application_;
};

}  // namespace

ApplicationObject::ApplicationObject(std::shared_ptr<ApplicationView> application,
                                     Ref<Object> static_objects)
    : application_(std::move(application)),
      variables_(std::make_shared<ApplicationVariables>(application_)),
      static_objects_(std::move(static_objects)) {}

std::span<const Member<ApplicationObject>> ApplicationObject::members() {
  using A = ApplicationObject;
  static constexpr Member<A> kMembers[] = {
      {"Value", &A::item, 1, 1, Access::Both},
      {"Lock", &A::lock},
      {"UnLock", &A::unlock},
      {"Contents", &A::contents, 0, 1, Access::Both},
      {"StaticObjects", &A::static_objects, 0, 1},
  };
  return kMembers;
}

std::unique_ptr<Enumeration> ApplicationObject::enumerate() {
  return walk_over(variables_->names());
}

Value ApplicationObject::item(const Call& call) {
  return variable_item(*variables_, call);
}

Value ApplicationObject::lock(const Call&) {
  application_->lock();
  return {};
}

Value ApplicationObject::unlock(const Call&) {
  application_->unlock();
  return {};
}

Value ApplicationObject::contents(const Call& call) {
  auto contents = make_ref<ContentsObject>(variables_);
  if (call.arguments().empty()) return Value::object(contents);
  return contents->invoke(kDefaultMember, call.kind(), call.arguments());
}

Value ApplicationObject::static_objects(const Call& call) {
  if (call.arguments().empty()) return Value::object(static_objects_);
  return static_objects_->invoke(kDefaultMember, call.kind(), call.arguments());
}

}  // namespace rk::pagehost
