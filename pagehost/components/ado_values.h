// What the database objects have in common: their errors and the kinds of columns as numbers. Pure
// functions.
#ifndef RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_
#define RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_

#include <cstdint>
#include <string_view>

#include "platform/columns.h"
#include "value/script_error.h"
#include "value/value.h"

namespace rk::pagehost {

inline constexpr std::string_view kAdoSource = "ADODB";

inline constexpr KnownError kConnectionUnusable{
    3709,
    "The connection cannot be used to perform this operation. It is either closed or invalid in "
    "this context."};

// As Field.Type and Parameter.Type number them.
enum class AdoType : std::int32_t {
  SmallInt = 2,
  Integer = 3,
  Single = 4,
  Double = 5,
  Currency = 6,
  Date = 7,
  Boolean = 11,
  UnsignedTinyInt = 17,
  DbTimeStamp = 135,
  VarChar = 200,
  VarWChar = 202,
  LongVarWChar = 203,
  LongVarBinary = 205,
};

// The type of a column that holds this value; a Null says nothing and counts as text.
AdoType ado_type_of(const Value& value);
// The type of a column that was declared; Unknown counts as text.
AdoType ado_type_of(const platform::ColumnTraits& traits);
// The value as a column of this type holds it: Empty and Null are Null, whole numbers that no Long
// holds stay Doubles, and what a text or an unknown column gets stays as it is. Raises
// -2147352571 where it is no such value.
Value suited(const Value& value, platform::ColumnType type);
// In bytes, 2 a character of a text; 0 for Null.
std::int32_t actual_size_of(const Value& value);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_
