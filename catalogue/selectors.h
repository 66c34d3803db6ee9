// ShowPro_List and Show_ServerList: a drop-down that leads to every product's page, and the links
// to the classes of one product area. Both are written in code, without templates.
#ifndef RK_CATALOGUE_SELECTORS_H_
#define RK_CATALOGUE_SELECTORS_H_

#include <string>
#include <string_view>

#include "site/page_context.h"
#include "value/value.h"

namespace rk::catalogue {

// A select element of all products that are sold on their own, under the agent's names.
std::string ShowPro_List(const site::PageContext& page, const Value& Agent_User);

struct ServerListParameters {
  Value Width;
  Value sHeight;  // of each box, in pixels
  Value
      ShowPage;  // "/host", "/mail/mail.asp" or "/database" in any letter case: what links lead to
  Value Agent_User;
};

// A box with a link for each class, and the element that ends the row.
std::string Show_ServerList(const site::PageContext& page, const ServerListParameters& parameters);

std::string product_classes_sql(std::string_view class_type, std::string_view agent_user);

}  // namespace rk::catalogue

#endif  // RK_CATALOGUE_SELECTORS_H_
