#include "site/random_letters.h"

#include <cmath>

#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::site {

namespace {

// Even numbers give small letters, odd ones capitals.
char letter(int x) {
  return static_cast<char>((x % 2 == 0 ? 'a' : 'A') + x);
}

}  // namespace

std::string MyRandc(const Value& count, platform::Random& random) {
  const double wanted = to_double(count);
  if (wanted > static_cast<double>(kMaxTextBytes)) raise(errors::kOutOfStringSpace);
  std::string letters;
  for (int position = 1; position <= wanted; ++position) {
    // Halves round to the even neighbour, so 0 and 25 have half a unit of the range each.
    letters += letter(static_cast<int>(std::nearbyint(random.fraction() * 25)));
  }
  return letters;
}

}  // namespace rk::site
