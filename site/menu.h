// Show_Menu and GetBarClass: the navigation menu, with a mark on the entry of the running page.
#ifndef RK_SITE_MENU_H_
#define RK_SITE_MENU_H_

#include <string>
#include <string_view>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::site {

// inputvalue where barurl is the running page, or the category of it that the query string's Id
// names; else Empty.
Value GetBarClass(const PageContext& page, const Value& barurl, const Value& inputvalue);

// Menu.html with its five fixed entries and the site's top shop categories; Back_Str stands where
// the running page is. A category with a Null ItemName loses the categories up to it.
std::string Show_Menu(const PageContext& page, const Value& Back_Str, const Value& Agent_User);

std::string menu_categories_sql(std::string_view agent_user);

}  // namespace rk::site

#endif  // RK_SITE_MENU_H_
