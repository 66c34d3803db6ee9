// What For Each holds while it walks: an enumeration as a value.
#ifndef RK_VBSCRIPT_ENUMERATIONS_H_
#define RK_VBSCRIPT_ENUMERATIONS_H_

#include <memory>

#include "value/array.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::vbscript {

class Walk final : public Object {
 public:
  explicit Walk(std::unique_ptr<Enumeration> items) : items_(std::move(items)) {}
  explicit Walk(Value array) : array_(std::move(array)) {}

  bool next(Value& item) {
    if (items_) return items_->next(item);
    const Array& array = array_.as_array();
    if (array.holds_bytes()) {
      if (at_ >= array.bytes().size()) return false;
      item = Value::byte(static_cast<std::uint8_t>(array.bytes()[at_++]));
      return true;
    }
    if (at_ >= array.elements().size()) return false;
    item = array.elements()[at_++];
    return true;
  }

  std::string_view type_name() const override { return "Object"; }
  MemberId member(std::string_view) const override { return kNoMember; }
  Value invoke(MemberId, CallKind, Arguments) override { raise(errors::kNoSuchMember); }

 private:
  std::unique_ptr<Enumeration> items_;
  Value array_;
  std::size_t at_ = 0;
};

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_ENUMERATIONS_H_
