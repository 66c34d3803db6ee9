// How a class of the library shows its operations to scripts: one table of rows, name beside
// member function, from which lookup without regard to letter case, the count of arguments and
// the call follow.
//
//   constexpr std::array kOperations{operation<&SiteMain::GetKey>("GetKey"), ...};
//
// An operation takes every argument as Value&, the caller's own variable, and returns a Value or
// nothing.
#ifndef RK_CLASSES_OPERATIONS_H_
#define RK_CLASSES_OPERATIONS_H_

#include <cstddef>
#include <span>
#include <string_view>
#include <type_traits>
#include <utility>

#include "value/object.h"
#include "value/script_error.h"
#include "value/text.h"
#include "value/value.h"

namespace rk::classes {

template <class Class>
struct Operation {
  std::string_view name;
  std::size_t arity;
  Value (*call)(Class& object, Arguments arguments);
};

namespace internal {

template <auto method, class Class, class Result, class... Parameters, std::size_t... i>
constexpr Operation<Class> operation_row(std::string_view name, Result (Class::*)(Parameters...),
                                         std::index_sequence<i...>) {
  return {name, sizeof...(Parameters), [](Class& object, Arguments arguments) -> Value {
            static_cast<void>(arguments);
            if constexpr (std::is_void_v<Result>) {
              (object.*method)(*arguments[i]...);
              return {};
            } else {
              return (object.*method)(*arguments[i]...);
            }
          }};
}

template <auto method, class Class, class Result, class... Parameters>
constexpr Operation<Class> operation_of(std::string_view name, Result (Class::*m)(Parameters...)) {
  return operation_row<method>(name, m, std::index_sequence_for<Parameters...>());
}

}  // namespace internal

template <auto method>
constexpr auto operation(std::string_view name) {
  return internal::operation_of<method>(name, method);
}

// The number of an operation by its place in the table; numbers begin behind the default member.
template <class Class>
MemberId member_of(std::span<const Operation<Class>> table, std::string_view name) {
  for (std::size_t i = 0; i < table.size(); ++i) {
    if (equal_ignoring_case(table[i].name, name)) {
      return static_cast<MemberId>(i) + kDefaultMember + 1;
    }
  }
  return kNoMember;
}

// Raises 438 for no such number and for an assignment, 450 for a wrong count of arguments, 449 for
// one that was left out between commas.
template <class Class>
Value call_operation(std::span<const Operation<Class>> table, Class& object, MemberId id,
                     CallKind kind, Arguments arguments) {
  const MemberId first = kDefaultMember + 1;
  if (id < first || id - first >= static_cast<MemberId>(table.size())) raise(errors::kNoSuchMember);
  if (kind == CallKind::Let || kind == CallKind::Set) raise(errors::kNoSuchMember);
  const Operation<Class>& operation = table[static_cast<std::size_t>(id - first)];
  if (arguments.size() != operation.arity) raise(errors::kWrongArgumentCount);
  for (const Value* argument : arguments) {
    if (argument->is_missing()) raise(errors::kArgumentNotOptional);
  }
  return operation.call(object, arguments);
}

}  // namespace rk::classes

#endif  // RK_CLASSES_OPERATIONS_H_
