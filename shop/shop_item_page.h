// Show_ShopInfo: the page of one shop article, with a form whose script shows the total price.
#ifndef RK_SHOP_SHOP_ITEM_PAGE_H_
#define RK_SHOP_SHOP_ITEM_PAGE_H_

#include "site/page_context.h"
#include "value/value.h"

namespace rk::shop {

// The file "Shop-ShowShop-Info.html" filled for the article whose number the query string names
// as `id`; Empty where it names none, or the article's category is gone. Articles of every agent
// are shown.
Value Show_ShopInfo(const site::PageContext& page);

}  // namespace rk::shop

#endif  // RK_SHOP_SHOP_ITEM_PAGE_H_
