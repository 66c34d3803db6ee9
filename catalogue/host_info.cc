#include "catalogue/host_info.h"

#include <array>
#include <memory>
#include <string>

#include "catalogue/host_list.h"
#include "catalogue/style_block.h"
#include "catalogue/true_value.h"
#include "site/repeat.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::catalogue {

namespace {

using platform::Connection;
using platform::Recordset;
using platform::SqlText;

constexpr double kUnlimited = 9999;

constexpr std::array<std::string_view, 15> kPlanTags{
    "HostName", "HostSpace",      "HostPrice",  "id",           "HostNo",
    "HostInfo", "MaxConnections", "Scriptmaps", "MaxBandwidth", "vPathNo",
    "CPU",      "FreeMail",       "FreeDB",     "Update",       "TestDay"};

std::string joined(const Value& value, std::string_view behind) {
  std::string text;
  append_text(text, value);
  return text.append(behind);
}

std::string pool_limit_sql(std::string_view mode) {
  return std::string("Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName='")
      .append(mode)
      .append("'");
}
std::string mail_name_sql(std::string_view id) {
  return std::string("Select [MailName] From [Rk_MailList] Where Id=").append(id);
}
std::string sql_name_sql(std::string_view id) {
  return std::string("Select [DbName] From [Rk_SqlList] Where Id=").append(id);
}
std::string my_sql_name_sql(std::string_view id) {
  return std::string("Select [DbName] From [Rk_mySqlList] Where Id=").append(id);
}

// The only field of the row that must be there; 3021 where it is not.
Value looked_up(Connection& db, std::string sql) {
  const auto rows = db.execute(std::move(sql));
  Value value = rows->field(std::size_t{0});
  rows->close();
  return value;
}

struct Offer {
  Value name;
  std::string price;
};

std::string price_text(const Value& price, const Value& mon_price, bool monthly) {
  std::string text = joined(price, "元/年 ");
  if (monthly) text.append(joined(mon_price, "元/月"));
  return text;
}

// The plan's name and price text, or the agent's own.
Offer offer_of(Connection& db, std::string_view agent_user, Recordset& plan) {
  // QUIRK: an agent's monthly price shows where the master has one, whatever the agent's is.
  const bool monthly = above(plan.field("MonPrice"), 0);
  Offer master{plan.field("HostName"),
               price_text(plan.field("Price"), plan.field("MonPrice"), monthly)};
  if (agent_user.empty()) return master;
  const auto own = row_if_any(db, host_price_sql(agent_user, joined(plan.field("Id"), "")));
  if (own == nullptr) return master;
  Offer offer{own->field("AgentSetName"),
              price_text(own->field("Price"), own->field("MonPrice"), monthly)};
  own->close();
  return offer;
}

std::string limit_text(const Value& limit, std::string_view unit) {
  if (equals(to_number(limit), kUnlimited)) return "无限制";
  return joined(limit, unit);
}

std::string info_html(const Value& info) {
  std::string html = to_text(info).string();
  site::replace_all(html, "\r", "<br>");
  return html;
}

std::string free_mail(Connection& db, const Value& id) {
  if (!differs_from(id, 0)) return "无";
  const std::string number = joined(id, "");
  const Value name = looked_up(db, mail_name_sql(number));
  return std::string("<a href='/mail/mail.asp?id=")
      .append(number)
      .append("'>")
      .append(joined(name, "</a>"));
}

Value free_databases(Connection& db, Recordset& plan) {
  Value names = Value::text("无");
  const Value sql_id = plan.field("freeMsSql");
  const Value my_sql_id = plan.field("freeMySql");
  if (differs_from(sql_id, 0)) names = looked_up(db, sql_name_sql(joined(sql_id, "")));
  if (!differs_from(my_sql_id, 0)) return names;
  Value my_sql = looked_up(db, my_sql_name_sql(joined(my_sql_id, "")));
  if (names.is_null() || equals(names, "无")) return my_sql;
  return Value::text(joined(names, "/").append(joined(my_sql, "")));
}

void fill_plan(site::Repeat& html, Connection& db, Recordset& plan, const Offer& offer) {
  const auto fill = [&](std::string_view tag) { html.fill(tag, plan, plan.ordinal(tag)); };
  html.fill("HostName", offer.name);
  fill("HostSpace");
  html.fill("HostPrice", offer.price);
  fill("id");
  fill("HostNo");
  html.fill("HostInfo", info_html(plan.field("HostInfo")));
  html.fill("MaxConnections", limit_text(plan.field("MaxConnections"), " 个"));
  fill("Scriptmaps");
  html.fill("MaxBandwidth", limit_text(plan.field("MaxBandwidth"), " KB/S"));
  fill("vPathNo");
  const Value limit = looked_up(db, pool_limit_sql(joined(plan.field("AppModeName"), "")));
  html.fill("CPU", joined(limit, "%"));
  html.fill("FreeMail", free_mail(db, plan.field("freeMail")));
  html.fill("FreeDB", free_databases(db, plan));
  html.fill("Update", is_true(plan.field("canupdate")) ? "支持" : "不支持");
  fill("TestDay");
}

Value plan_html(const site::PageContext& page, Connection& db, const Value& Agent_User) {
  const Text file = site::template_text(page, "Host-ShowHost-Info.html");
  const std::string id = site::ReStr(page.request().query("id"));
  if (id.empty() || !is_numeric(Value::text(id))) return {};

  const Text agent_user = joined_text(Agent_User);
  // OPTIMIZATION: a file is filled like the only row of a list, in one pass instead of one a tag.
  site::Repeat html(file.view(), kPlanTags);
  const auto plan = db.execute(host_info_sql(id, !agent_user.empty()));
  if (plan->eof()) return {};
  const Offer offer = offer_of(db, agent_user.view(), *plan);
  fill_plan(html, db, *plan, offer);
  plan->close();
  html.next();
  return Value::text(html.filled());
}

}  // namespace

Value Show_HostInfo(const site::PageContext& page, const Value& Agent_User) {
  return site::read_region(page, [&](Connection& db) { return plan_html(page, db, Agent_User); });
}

SqlText host_info_sql(std::string_view id, bool for_agent) {
  SqlText sql("Select * From [Rk_HostList] Where [ID]=");
  sql.add_outside(id);
  if (for_agent) sql.add(" And [AgentS]=1");
  return sql;
}

}  // namespace rk::catalogue
