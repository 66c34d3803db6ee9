// An object whose default member is its value, as a record set's field is when pages pass it.
#ifndef RK_TESTS_SUPPORT_FIELD_OBJECT_H_
#define RK_TESTS_SUPPORT_FIELD_OBJECT_H_

#include <string_view>
#include <utility>

#include "value/object.h"
#include "value/value.h"

namespace rk::tests {

class FieldObject final : public Object {
 public:
  explicit FieldObject(Value value) : value_(std::move(value)) {}
  std::string_view type_name() const override { return "Field"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override { return value_; }

 private:
  Value value_;
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_FIELD_OBJECT_H_
