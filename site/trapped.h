// The guard of the few steps whose failure is passed over: the template helpers and the services.
#ifndef RK_SITE_TRAPPED_H_
#define RK_SITE_TRAPPED_H_

#include <optional>
#include <utility>

#include "value/script_error.h"

namespace rk::site {

// Runs a step and answers the error that it raised, or nothing. The end of a page passes through.
template <class Step>
std::optional<ScriptError> trapped(Step&& step) {
  try {
    std::forward<Step>(step)();
    return std::nullopt;
  } catch (const ScriptError& error) {
    return error;
  }
}

}  // namespace rk::site

#endif  // RK_SITE_TRAPPED_H_
