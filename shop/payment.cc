#include "shop/payment.h"

#include <array>
#include <cmath>
#include <string_view>

#include "site/agent_filter.h"
#include "site/repeat.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/conversions.h"

namespace rk::shop {

namespace {

constexpr std::array<std::string_view, 3> kPayTypeTags{"Paytype", "PayIco", "PayInfo"};
constexpr std::array<std::string_view, 2> kEnterPayTags{"Id", "PayType"};

std::string_view loop_template(const Text& file) {
  return site::cut(file.view(), "<!--Loop-->", "<!--End Loop-->");
}

// Line ends and blanks as HTML keeps them.
// QUIRK: a line feed stays behind its "<br>", and a line feed alone is no line end.
std::string instructions(const Value& pay_info) {
  std::string html = to_text(pay_info).string();
  site::replace_all(html, "\r", "<br>");
  site::replace_all(html, " ", "&nbsp;");
  return html;
}

}  // namespace

Text Show_PayType(const site::PageContext& page, const Value& Agent_User) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const Text file = site::template_text(page, "User-Service-PayType.html");
  site::Repeat methods(loop_template(file), kPayTypeTags);

  const auto rows = db->open_recordset(pay_type_sql(Agent_User), platform::CursorType::Keyset,
                                       platform::LockType::ReadOnly);
  for (; !rows->eof(); rows->move_next()) {
    methods.fill("Paytype", rows->field("Paytype"));
    methods.fill("PayIco", rows->field("PayIco"));
    methods.fill("PayInfo", instructions(rows->field("PayInfo")));
    methods.next();
  }
  rows->close();
  db->close();
  return methods.into(file.view());
}

Text Show_EnterPay(const site::PageContext& page, const platform::Clock& clock,
                   const Value& Agent_User) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const Text file = site::template_text(page, "User-Service-EnterPay.html");
  site::Repeat methods(loop_template(file), kEnterPayTags);

  const auto rows = db->execute(enter_pay_sql(Agent_User));
  for (; !rows->eof(); rows->move_next()) {
    methods.fill("Id", rows->field("Id"));
    methods.fill("PayType", rows->field("PayType"));
    methods.next();
  }
  rows->close();
  db->close();

  std::string html = methods.into(file.view()).string();
  site::fill(html, "UserName", page.session().value("UserName"));
  site::fill(html, "Date", date_text(std::floor(clock.now())));
  return Text(html);
}

std::string pay_type_sql(const Value& agent_user) {
  if (site::is_master(agent_user)) {
    return "Select * From [Pay] Where AgentUser Is Null Or AgentUser=''";
  }
  std::string sql = "Select * From [Pay] Where AgentUser='";
  append_text(sql, agent_user);
  return sql.append("'");
}

// QUIRK: other brackets than pay_type_sql's, and a blank at the end for an agent.
std::string enter_pay_sql(const Value& agent_user) {
  if (site::is_master(agent_user)) {
    return "Select * From [Pay] Where [AgentUser] Is Null Or AgentUser=''";
  }
  std::string sql = "Select * From [Pay] Where [AgentUser]='";
  append_text(sql, agent_user);
  return sql.append("' ");
}

}  // namespace rk::shop
