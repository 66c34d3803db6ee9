// Short ways to call an object as script does, for tests of objects without an interpreter.
#ifndef RK_TESTS_SUPPORT_OBJECT_CALLS_H_
#define RK_TESTS_SUPPORT_OBJECT_CALLS_H_

#include <string>
#include <string_view>
#include <vector>

#include "value/conversions.h"
#include "value/object.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::tests {

inline Value call_as(CallKind kind, const Value& object, std::string_view member,
                     std::vector<Value> arguments) {
  Object& callee = *object.as_object();
  const MemberId id = member.empty() ? kDefaultMember : callee.member(member);
  if (id == kNoMember) raise(errors::kNoSuchMember);
  std::vector<Value*> places;
  for (Value& argument : arguments) places.push_back(&argument);
  return callee.invoke(id, kind, places);
}

// An empty name is the default member.
inline Value get(const Value& object, std::string_view member, std::vector<Value> arguments = {}) {
  return call_as(CallKind::Get, object, member, std::move(arguments));
}
// The value is the last argument.
inline void let(const Value& object, std::string_view member, std::vector<Value> arguments) {
  call_as(CallKind::Let, object, member, std::move(arguments));
}

inline std::string text_of(const Value& value) {
  return joined_text(value).string();
}

// What For Each gives, joined with ",".
inline std::string walked(const Value& object) {
  std::string out;
  const auto walk = object.as_object()->enumerate();
  for (Value item; walk->next(item);) out += (out.empty() ? "" : ",") + text_of(item);
  return out;
}

template <class Step>
std::int32_t error_number(Step&& step) {
  try {
    step();
  } catch (const ScriptError& error) {
    return error.number();
  }
  return 0;
}

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_OBJECT_CALLS_H_
