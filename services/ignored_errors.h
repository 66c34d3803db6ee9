// The services' guard: a script error inside a service is ignored, as their pages expect. The end
// of the page is no error and passes through.
#ifndef RK_SERVICES_IGNORED_ERRORS_H_
#define RK_SERVICES_IGNORED_ERRORS_H_

#include "value/script_error.h"

namespace rk::services {

// Runs `call`; false where a script error ended it.
template <class Call>
bool ran_without_error(Call&& call) {
  try {
    call();
    return true;
  } catch (const ScriptError&) {
    return false;
  }
}

}  // namespace rk::services

#endif  // RK_SERVICES_IGNORED_ERRORS_H_
