// Which table of a Select a record set over it writes to: the one whose rows come up once each at
// most, because every other table gives at most one row for each of them (joined by a key of its
// own, or held to one value). Pure functions on a resolved tree.
#pragma once

#include "jetsql/resolver.h"

namespace rk::jetsql {

// Null where there is none, or where its rows cannot be told apart. The only table of a Select is
// its own, with or without numbers of its rows. Of several that would do, the first one written.
const Binding* updatable_binding(const Select& select);

}  // namespace rk::jetsql
