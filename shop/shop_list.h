// Show_ShopList: the shop's categories with their goods, in tabs where a category has
// sub-categories.
#ifndef RK_SHOP_SHOP_LIST_H_
#define RK_SHOP_SHOP_LIST_H_

#include <string>
#include <string_view>

#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::shop {

// As pages pass them; numbers may be texts.
struct ShopListParameters {
  Value Style;           // which blocks of the template: "<!--Shop ServDay Style" + Style + "-->"
  Value ShowItems;       // most categories of the front view; "0": all
  Value ListNum;         // most goods of a category or sub-category; "0": all
  Value NewsLineNum;     // goods in a row of the layout; "0": rows are never broken
  Value LineCode;        // put between rows
  Value OrderType;       // the column to sort goods by, descending
  Value ItemOrders;      // the column to sort categories by, ascending
  Value ConLineHeight;   // not used
  Value ListLineHeight;  // for {ListLineHeight} and {ConLineHeight}
  Value showIndex;       // not used
  Value Agent_User;      // Empty, Null or "": the master site
};

// The front view, or the one category that the query string names as `Id`. Raises what the
// database raises for a query that parameters and stored lists make no valid one of.
std::string Show_ShopList(const site::PageContext& page, const ShopListParameters& parameters);

// `id`: from the query string; empty for the front view.
platform::SqlText shop_categories_sql(const ShopListParameters& parameters, std::string_view id);
std::string sub_categories_sql(std::string_view ids);
// `list`: the numbers of categories, as stored.
std::string goods_sql(const ShopListParameters& parameters, std::string_view list);

// The numbers of a category's list but its own: 12,13 of 5,12,13 for 5. Raises 5 where nothing
// but one "," is left.
std::string child_ids(std::string_view child_str, std::string_view id);

}  // namespace rk::shop

#endif  // RK_SHOP_SHOP_LIST_H_
