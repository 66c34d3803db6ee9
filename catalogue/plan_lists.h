// Show_SqlList, Show_MySqlList, Show_MailList: the unpaged lists of database and mail plans.
//
// One family that goes the hosting plan list's way, without pages and without the plans that only
// come free with a hosting plan.
#ifndef RK_CATALOGUE_PLAN_LISTS_H_
#define RK_CATALOGUE_PLAN_LISTS_H_

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::catalogue {

// As pages pass them; what each means stands with HostListParameters.
struct PlanListParameters {
  Value Style;
  Value ListNum;
  Value NewLineNum;
  Value LineCode;
  Value OrderType;
  Value ConLineHeight;
  Value ListLineHeight;  // also for each plan's {ListLineHeight}
  Value Agent_User;
};

// The plans as HTML; empty where the template lacks the style's block. Each raises what the
// database raises for a query that the parameters make no valid one of, and 13 for a NewLineNum
// that is no number, where there are two plans or more.
Text Show_SqlList(const site::PageContext& page, const PlanListParameters& parameters);
Text Show_MySqlList(const site::PageContext& page, const PlanListParameters& parameters);
Text Show_MailList(const site::PageContext& page, const PlanListParameters& parameters);

enum class PlanList : std::uint8_t { Sql, MySql, Mail };

// The plans, of one class where `class_id` (from the request) is not empty.
platform::SqlText plan_list_sql(PlanList list, const PlanListParameters& parameters,
                                std::string_view class_id);
// An agent's own name and price for a plan.
std::string plan_price_sql(PlanList list, std::string_view agent_user, std::string_view plan_id);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_PLAN_LISTS_H_
