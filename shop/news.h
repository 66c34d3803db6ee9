// News and help items: two short lists, and the pages of the news page, newest first.
#ifndef RK_SHOP_NEWS_H_
#define RK_SHOP_NEWS_H_

#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/database.h"
#include "site/page_context.h"
#include "value/value.h"

namespace rk::shop {

struct NewsParameters {
  Value types;       // 1: news, 0: help, anything else: no kind
  Value nos;         // most items
  Value swdata;      // 1: show the time
  Value lfno;        // units of a title before it is shortened
  Value Agent_User;  // Empty, Null or "": the master site
};
// Writes the list to the response. Leaves its connection to the end of the call.
void getnews(const site::PageContext& page, const platform::Clock& clock,
             const NewsParameters& parameters);

struct NewsListParameters {
  Value NewsType;
  Value NewsNum;
  Value TitleType;    // HTML in front of every title
  Value TitleLength;  // a title of so many units or more is shortened
  Value lineheight;   // the table's cell padding
  Value ShowTime;     // "0" hides the time
  Value Agent_User;
};
// The list as a table. Leaves record set and connection to the end of the call.
std::string Show_NewsList(const site::PageContext& page, const NewsListParameters& parameters);

// One page of all items, or of those of the query string's `type`. Raises 13 for a `page` that is
// no number, 3001 for one beyond the last.
std::string Show_NewsPageList(const site::PageContext& page, const platform::Clock& clock,
                              const Value& Agent_User);

std::string getnews_sql(const NewsParameters& parameters, std::string_view kind);
std::string news_list_sql(const NewsListParameters& parameters);
platform::SqlText news_page_sql(std::string_view type, const Value& agent_user);

}  // namespace rk::shop

#endif  // RK_SHOP_NEWS_H_
