// What the database objects have in common: their errors and the kinds of columns as numbers. Pure
// functions.
#ifndef RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_
#define RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_

#include <cstdint>
#include <string>
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

inline constexpr KnownError kRowDeleted{
    -2147217885, "Row handle referred to a deleted row or a row marked for deletion.",
    errors::kDatabaseSource};

// As Field.Type and Parameter.Type number them.
enum class AdoType : std::int32_t {
  Empty = 0,
  SmallInt = 2,
  Integer = 3,
  Single = 4,
  Double = 5,
  Currency = 6,
  Date = 7,
  Boolean = 11,
  Variant = 12,
  Decimal = 14,
  TinyInt = 16,
  UnsignedTinyInt = 17,
  UnsignedSmallInt = 18,
  UnsignedInt = 19,
  BigInt = 20,
  Binary = 128,
  Char = 129,
  WChar = 130,
  Numeric = 131,
  DbDate = 133,
  DbTime = 134,
  DbTimeStamp = 135,
  VarChar = 200,
  LongVarChar = 201,
  VarWChar = 202,
  LongVarWChar = 203,
  VarBinary = 204,
  LongVarBinary = 205,
};

// The type of a column that holds this value; a Null says nothing and counts as text.
AdoType ado_type_of(const Value& value);
// The type of a column that was declared; Unknown counts as text.
AdoType ado_type_of(const platform::ColumnTraits& traits);
// How a column that a page makes of this type behaves.
platform::ColumnType column_type_of(AdoType type) noexcept;
// Whether it holds texts or bytes of up to a length that is named with it.
bool is_sized(AdoType type) noexcept;

inline constexpr KnownError kFieldMismatch{-2147352571, "Type mismatch.", errors::kDatabaseSource};
inline constexpr KnownError kFieldOverflow{
    -2147217887, "Multiple-step operation generated errors: the value does not fit its field.",
    errors::kDatabaseSource};

// The value as a column of this type holds it: texts read as numbers and dates, fractions rounded
// to whole numbers (halves to the even neighbour), a text's bytes in a column of bytes. Whole
// numbers past a Long stay as they are: the database decides. Empty and Null are Null; Unknown
// takes anything. Raises kFieldMismatch and kFieldOverflow.
Value value_as(platform::ColumnType type, const Value& value);
// As above for a parameter: an Empty stays one.
Value value_as(AdoType type, const Value& value);
bool holds_bytes(const Value& value);
// Of a text the bytes that LenB counts; of Null none.
std::string bytes_of(const Value& value);
// In bytes, 2 a character of a text; 0 for Null.
std::int32_t actual_size_of(const Value& value);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_ADO_VALUES_H_
