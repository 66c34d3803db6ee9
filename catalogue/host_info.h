// Show_HostInfo: the page of one hosting plan.
#ifndef RK_CATALOGUE_HOST_INFO_H_
#define RK_CATALOGUE_HOST_INFO_H_

#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::catalogue {

// The plan that the request's `id` names, as HTML; Empty where `id` is no number or there is no
// such plan (for agents: none that they may sell). Raises 3021 where the plan names a mail plan,
// database or pool mode that is not there, 94 where its HostInfo is Null.
Value Show_HostInfo(const site::PageContext& page, const Value& Agent_User);

// The plan of a number out of the request.
platform::SqlText host_info_sql(std::string_view id, bool for_agent);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_HOST_INFO_H_
