// Whose rows a region shows: those of the agent that the page names, or the master site's.
// Each operation has texts of its own for the two; only the question is shared.
#ifndef RK_SITE_AGENT_FILTER_H_
#define RK_SITE_AGENT_FILTER_H_

#include "value/conversions.h"
#include "value/value.h"

namespace rk::site {

// Empty, Null and "" are the master site.
inline bool is_master(const Value& agent_user) {
  return joined_text(agent_user).empty();
}

}  // namespace rk::site

#endif  // RK_SITE_AGENT_FILTER_H_
