#include "site/shortened.h"

#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::site {

bool longer_than(const Value& title, const Value& length) {
  const double most = to_double(length);
  return !title.is_null() && static_cast<double>(to_text(title).length()) > most;
}

bool at_least(const Value& title, const Value& length) {
  const double least = to_double(length);
  return !title.is_null() && static_cast<double>(to_text(title).length()) >= least;
}

Text first_units(const Value& title, const Value& length) {
  const std::int32_t units = to_long(length);
  if (units < 0) raise(errors::kInvalidCall);
  return joined_text(title).mid(0, static_cast<std::size_t>(units));
}

}  // namespace rk::site
