// Titles that are cut at a length in 16-bit units. A Null title has no length: it is never too
// long, and its text is "". Lengths that are no number raise 13.
#ifndef RK_SITE_SHORTENED_H_
#define RK_SITE_SHORTENED_H_

#include "value/value.h"

namespace rk::site {

bool longer_than(const Value& title, const Value& length);
bool at_least(const Value& title, const Value& length);

// Raises 5 for a length below 0.
Text first_units(const Value& title, const Value& length);

}  // namespace rk::site

#endif  // RK_SITE_SHORTENED_H_
