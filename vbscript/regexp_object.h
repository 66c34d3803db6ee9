// RegExp: the regular expressions of scripts, with their Matches, Match and SubMatches.
#ifndef RK_VBSCRIPT_REGEXP_OBJECT_H_
#define RK_VBSCRIPT_REGEXP_OBJECT_H_

#include "value/value.h"
#include "vbscript/host.h"

namespace rk::vbscript {

// A new object. Raises 429 where the services have no regular expressions; they must outlive it.
Value regexp_object(const Services& services);

}  // namespace rk::vbscript

#endif  // RK_VBSCRIPT_REGEXP_OBJECT_H_
