// What the library's objects need beside the page: handed down by app/, never looked up.
#ifndef RK_CLASSES_EQUIPMENT_H_
#define RK_CLASSES_EQUIPMENT_H_

#include "platform/clock.h"
#include "platform/random.h"

namespace rk::classes {

// The referenced objects outlive every object made with them; several threads may use them.
struct Equipment {
  const platform::Clock& clock;
  platform::Random& random;
};

}  // namespace rk::classes

#endif  // RK_CLASSES_EQUIPMENT_H_
