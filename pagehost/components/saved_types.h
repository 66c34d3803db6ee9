// The types of a saved record set's columns, and their values as texts. Pure functions.
#ifndef RK_PAGEHOST_COMPONENTS_SAVED_TYPES_H_
#define RK_PAGEHOST_COMPONENTS_SAVED_TYPES_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "pagehost/components/ado_values.h"
#include "value/value.h"

namespace rk::pagehost {

// How a type is written in the schema.
struct SavedType {
  AdoType type;
  std::string_view data_type;      // dt:type
  std::string_view database_type;  // rs:dbtype, empty where the first says it all
  std::int32_t length;             // dt:maxLength; 0: the column's own
  bool fixed = false;              // rs:fixedlength
  bool is_long = false;            // rs:long
};

// A type that is not known is a long text.
const SavedType& saved_type(AdoType type);
// The type of these words; the nearest one where no type has exactly these.
AdoType type_of_saved(std::string_view data_type, std::string_view database_type, bool fixed,
                      bool is_long);

// Of a value that is no Null, as a column of this type holds it.
std::string saved_value(AdoType type, const Value& value);
// The value again; raises 13 where the text is none of the type.
Value value_of_saved(AdoType type, std::string_view text);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_SAVED_TYPES_H_
