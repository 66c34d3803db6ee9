// Show_HostList: the paged list of hosting plans.
//
// The model of the list regions: template, query, rows, frame.
#ifndef RK_CATALOGUE_HOST_LIST_H_
#define RK_CATALOGUE_HOST_LIST_H_

#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::catalogue {

// As pages pass them; numbers may be texts.
struct HostListParameters {
  Value Style;           // which block of the template: "<!--HostList Style" + Style + "-->"
  Value ListNum;         // most rows read; "0": all
  Value NewLineNum;      // plans in a row of the layout; 0: rows are never broken
  Value LineCode;        // put behind every NewLineNum-th plan
  Value OrderType;       // the column to sort by, descending
  Value ConLineHeight;   // for each plan's {ConLineHeight}
  Value ListLineHeight;  // for the block's {ListLineHeight}
  Value PageSize;        // plans a page
  Value Agent_User;      // Empty, Null or "": the master site
};

// One page of the plans as HTML; empty where the template lacks the style's block. Raises what the
// database raises for a query that the parameters make no valid one of, 13 for a NewLineNum (where
// there are plans), a Page of the request or a PageSize that is no number, 3001 for a PageSize
// below 1, 3021 for a Page of an empty list.
Text Show_HostList(const site::PageContext& page, const HostListParameters& parameters);

// The plans, of one class where `class_id` (from the request) is not empty.
platform::SqlText host_list_sql(const HostListParameters& parameters, std::string_view class_id);
// An agent's own name and prices for a plan.
std::string host_price_sql(std::string_view agent_user, std::string_view plan_id);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_HOST_LIST_H_
