#include "catalogue/true_value.h"

#include "value/comparison.h"

namespace rk::catalogue {

bool is_true(const Value& flag) {
  if (flag.is_text()) return equals(flag, "True");
  return equals(flag, -1);
}

}  // namespace rk::catalogue
