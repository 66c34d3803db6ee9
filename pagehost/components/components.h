// The components that pages of any site create by their common names: database objects, the
// dictionary, the file system object. For the program's wiring.
#ifndef RK_PAGEHOST_COMPONENTS_COMPONENTS_H_
#define RK_PAGEHOST_COMPONENTS_COMPONENTS_H_

#include "pagehost/pages/programs.h"

namespace rk::pagehost {

// Before the first page.
void add_components(Programs& programs);

}  // namespace rk::pagehost

#endif  // RK_PAGEHOST_COMPONENTS_COMPONENTS_H_
