// The shop list step by step, as its rule is told: every replacement is made in the whole result.
// What the shipped one is compared with.
#ifndef RK_TESTS_PLAIN_SHOP_LIST_H_
#define RK_TESTS_PLAIN_SHOP_LIST_H_

#include <string>

#include "shop/shop_list.h"

namespace rk::plain {

std::string shop_list(const site::PageContext& page, const shop::ShopListParameters& parameters);

}  // namespace rk::plain

#endif  // RK_TESTS_PLAIN_SHOP_LIST_H_
