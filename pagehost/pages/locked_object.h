// LockedObject: lets several threads use one object, a call at a time: for objects that live as
// long as the application. What goes in and comes out is shared between threads.
#ifndef RK_PAGEHOST_PAGES_LOCKED_OBJECT_H_
#define RK_PAGEHOST_PAGES_LOCKED_OBJECT_H_

#include <memory>
#include <mutex>
#include <string_view>
#include <utility>

#include "value/object.h"
#include "value/value.h"

namespace rk::pagehost {

class LockedObject final : public Object {
 public:
  explicit LockedObject(Ref<Object> inner) : inner_(std::move(inner)) {
    inner_->share();
    share();
  }
  std::string_view type_name() const override { return inner_->type_name(); }
  MemberId member(std::string_view name) const override {
    const std::lock_guard held(mutex_);
    return inner_->member(name);
  }
  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    const std::lock_guard held(mutex_);
    for (Value* argument : arguments) argument->share();
    Value result = inner_->invoke(id, kind, arguments);
    result.share();
    return result;
  }
  std::unique_ptr<Enumeration> enumerate() override;

 private:
  mutable std::recursive_mutex mutex_;
  Ref<Object> inner_;
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_LOCKED_OBJECT_H_
