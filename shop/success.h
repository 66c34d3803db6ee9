// Success cases: sites that were built for customers, as category links, a short list and pages.
#ifndef RK_SHOP_SUCCESS_H_
#define RK_SHOP_SUCCESS_H_

#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::shop {

// The category links; Empty where the site's list is "". Raises 3021 for a site without its row,
// 94 for one without a list (Null).
Value Show_SuccessItem(const site::PageContext& page, const Value& Width, const Value& sHeight,
                       const Value& Agent_User);

struct SuccessListParameters {
  Value SuccNum;      // most cases
  Value TitleLength;  // units of the longest title that is shown whole
  Value Width;        // pixels
  Value titHeight;    // pixels
  Value TitleType;    // HTML in front of each link
  Value Agent_User;   // Empty, Null or "": the master site
};
std::string Show_SuccessList(const site::PageContext& page,
                             const SuccessListParameters& parameters);

struct SuccessPageParameters {
  Value Style;       // which block of the template: "<!--Style" + Style + "-->"
  Value PageNumber;  // cases a page
  Value NewLineNum;  // cases in a row of the layout
  Value LineCode;    // put behind every NewLineNum-th case
  Value OrderType;   // the column to sort by, descending
  Value Agent_User;
};
// One page of the cases, of the query string's `Type` where there is one.
Text Show_SuccessPageList(const site::PageContext& page, const SuccessPageParameters& parameters);

std::string success_item_sql(const Value& agent_user);
std::string success_list_sql(const SuccessListParameters& parameters);
platform::SqlText success_page_sql(const SuccessPageParameters& parameters, std::string_view type);

}  // namespace rk::shop

#endif  // RK_SHOP_SUCCESS_H_
