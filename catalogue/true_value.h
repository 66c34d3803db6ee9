// Whether a flag out of the database is True, as pages compare it.
#ifndef RK_CATALOGUE_TRUE_VALUE_H_
#define RK_CATALOGUE_TRUE_VALUE_H_

#include "value/value.h"

namespace rk::catalogue {

// True for a Boolean True, the number -1 and the text "True"; false for Null and for 1.
bool is_true(const Value& flag);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_TRUE_VALUE_H_
