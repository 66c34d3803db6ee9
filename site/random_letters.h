// Random texts of letters, which keep caches along an address's way from answering.
#ifndef RK_SITE_RANDOM_LETTERS_H_
#define RK_SITE_RANDOM_LETTERS_H_

#include <string>

#include "platform/random.h"
#include "value/value.h"

namespace rk::site {

// So many letters of a c e g i k m o q s u w y B D F H J L N P R T V X Z, the two end letters half
// as likely as the others; none where the count is below 1. Raises 13 or 94 for a count that is no
// number.
std::string MyRandc(const Value& count, platform::Random& random);

}  // namespace rk::site

#endif  // RK_SITE_RANDOM_LETTERS_H_
