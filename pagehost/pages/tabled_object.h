// TabledObject: an Object whose members stand in a table, name by name. For the page host's own
// objects and components; of the page's thread like any Object.
//
// A member's number is its place in the table; the first one is the default member (its name may
// be empty where it has none).
#ifndef RK_PAGEHOST_PAGES_TABLED_OBJECT_H_
#define RK_PAGEHOST_PAGES_TABLED_OBJECT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "value/conversions.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::pagehost {

// One call, with its arguments apart from the value that an assignment brings.
class Call {
 public:
  Call(CallKind kind, Arguments arguments) : kind_(kind), arguments_(arguments) {}

  bool assigns() const { return kind_ == CallKind::Let || kind_ == CallKind::Set; }
  bool sets_object() const { return kind_ == CallKind::Set; }
  bool wants_result() const { return kind_ == CallKind::Get; }
  CallKind kind() const { return kind_; }
  // The arguments between the brackets.
  std::size_t count() const { return arguments_.size() - (assigns() ? 1 : 0); }
  bool has(std::size_t index) const { return index < count() && !arguments_[index]->is_missing(); }
  Value& at(std::size_t index) const { return *arguments_[index]; }
  const Value& assigned() const { return *arguments_.back(); }
  // What is assigned, without an object around it where it is a Let.
  Value assigned_value() const { return sets_object() ? assigned() : plain_value(assigned()); }
  Arguments arguments() const { return arguments_; }

  std::string text(std::size_t index) const { return to_text(at(index)).string(); }
  std::string text_or(std::size_t index, std::string_view otherwise) const {
    return has(index) ? text(index) : std::string(otherwise);
  }
  std::int32_t number(std::size_t index) const { return to_long(at(index)); }
  std::int32_t number_or(std::size_t index, std::int32_t otherwise) const {
    return has(index) ? number(index) : otherwise;
  }
  bool flag_or(std::size_t index, bool otherwise) const {
    return has(index) ? to_boolean(at(index)) : otherwise;
  }

 private:
  CallKind kind_;
  Arguments arguments_;
};

// How a member may be used.
enum class Access : std::uint8_t {
  Read,   // a method, or a property that is read
  Write,  // a property that is only assigned
  Both,
};

template <class T>
struct Member {
  std::string_view name;  // as pages write it
  Value (T::*operation)(const Call& call);
  std::uint8_t least = 0;  // arguments between the brackets
  std::uint8_t most = 0;
  Access access = Access::Read;
};

// Derived classes have `static std::span<const Member<T>> members()`.
template <class T, class Base = Object>
class TabledObject : public Base {
 public:
  using Base::Base;

  MemberId member(std::string_view name) const override {
    if (name.empty()) return kNoMember;
    MemberId id = 0;
    for (const Member<T>& each : T::members()) {
      if (each.name.size() == name.size() && equal_ignoring_case(each.name, name)) return id;
      ++id;
    }
    return kNoMember;
  }

  const void* member_table() const override { return T::members().data(); }

  Value invoke(MemberId id, CallKind kind, Arguments arguments) override {
    const auto table = T::members();
    if (id < 0 || static_cast<std::size_t>(id) >= table.size()) raise(errors::kNoSuchMember);
    const Member<T>& found = table[static_cast<std::size_t>(id)];
    const Call call(kind, arguments);
    if (found.operation == nullptr ||
        found.access == (call.assigns() ? Access::Read : Access::Write)) {
      raise(call.assigns() ? errors::kWrongArgumentCount : errors::kNoSuchMember);
    }
    if (call.count() < found.least || call.count() > found.most) raise(errors::kWrongArgumentCount);
    return (static_cast<T*>(this)->*found.operation)(call);
  }
};

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_PAGES_TABLED_OBJECT_H_
