// Object: what script reaches by names, and the kinds of values that hold other values.
//
// A name is looked up once (member) and called by its number (invoke), so that callers may keep
// numbers. Arguments are passed by reference: what an operation assigns changes the caller's
// variable. Objects belong to one page's thread unless they are share()d first.
#ifndef RK_VALUE_OBJECT_H_
#define RK_VALUE_OBJECT_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "value/ref.h"

namespace rk {

class Value;

using MemberId = int;
inline constexpr MemberId kNoMember = -1;
// The member that `object(arguments)` and the object's plain value mean.
inline constexpr MemberId kDefaultMember = 0;

enum class CallKind {
  Method,  // a statement: the result is not wanted
  Get,     // an expression: a property is read or a method called for its result
  Let,     // object.name(arguments) = value: the value is the last argument
  Set,     // Set object.name(arguments) = object
};

// Each argument is a variable of the caller or a temporary; never null. An argument left out
// between commas is Value::missing().
using Arguments = std::span<Value* const>;

// What For Each walks. next() answers false at the end and leaves `item` alone then.
class Enumeration {
 public:
  virtual ~Enumeration() = default;
  virtual bool next(Value& item) = 0;
};

// What an object keeps alive, for the count of a page's memory.
struct HeldMemory {
  std::vector<const Value*> values;  // valid until a script runs again
  std::size_t bytes = 0;             // beside them
};

class Object : public RefCounted {
 public:
  // As TypeName shows it.
  virtual std::string_view type_name() const = 0;

  // The number of a name in any letter case (ASCII), or kNoMember.
  virtual MemberId member(std::string_view name) const = 0;

  // Objects that answer the same address number their names alike, so that callers may keep the
  // numbers by it; null where names are only this object's.
  virtual const void* member_table() const { return nullptr; }

  // Raises 438 for a number or kind the object does not have, 450 for a wrong count of arguments,
  // and what the operation itself raises. A result that is nothing is Empty.
  virtual Value invoke(MemberId id, CallKind kind, Arguments arguments) = 0;

  // For Each; raises 451 where the object is no collection.
  virtual std::unique_ptr<Enumeration> enumerate();

  // Adds what the object holds for the page alone; small fixed parts may be left out.
  virtual void add_held(HeldMemory&) const {}
};

}  // namespace rk

#endif  // RK_VALUE_OBJECT_H_
