// Between what the file stores and what a page sees: the declared type of a column decides. Pure
// functions.
#ifndef RK_ADAPTERS_SQLITE_FIELD_VALUES_H_
#define RK_ADAPTERS_SQLITE_FIELD_VALUES_H_

#include <string>

#include "adapters/sqlite/row_buffer.h"
#include "jetsql/schema.h"
#include "jetsql/translate.h"
#include "platform/columns.h"
#include "value/value.h"

namespace rk::sqlite {

// INTEGER a Long or a Double, CURRENCY a Currency, BOOLEAN a Boolean, DATETIME a Date, and so on; a
// stored value that its type cannot show (a word in a DATETIME) and an Unknown type go by what is
// stored. NULL is Null.
Value field_value(const RowBuffer& rows, const Cell& cell, jetsql::Type type);

platform::ColumnType column_type(jetsql::Type type) noexcept;

// Appends joined_text(field_value(...)) without a value between; false where it is Null.
bool append_field_value(std::string& out, const RowBuffer& rows, const Cell& cell,
                        jetsql::Type type);

// A page's value as a statement takes it. Raises -2147217913 for an array that holds no bytes, for
// Nothing and for an argument left out. `bytes` is set where the value is an array of bytes, and
// the answer is a Text of no meaning then.
jetsql::Literal literal_of(const Value& value, bool& bytes);

// How a column of this type takes what a page stores into it.
jetsql::Parameter::Conversion stored_conversion(jetsql::Type type) noexcept;

}  // namespace rk::sqlite

#endif  // RK_ADAPTERS_SQLITE_FIELD_VALUES_H_
