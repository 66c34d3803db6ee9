#include "catalogue/host_info.h"

#include <array>
#include <memory>
#include <optional>
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
#include "value/script_error.h"

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

// Appends the only field of a row that must be there (3021); false where it is Null.
bool append_looked_up(std::string& out, Connection& db, std::string sql) {
  const auto rows = db.execute(std::move(sql));
  const bool some = rows->append_field_text(0, out);
  rows->close();
  return some;
}

// An offer's price text; `offer` is the plan or the agent's own row for it.
std::string price_text(Recordset& offer, bool monthly) {
  std::string text;
  offer.append_field_text(offer.ordinal("Price"), text);
  text.append("元/年 ");
  if (!monthly) return text;
  offer.append_field_text(offer.ordinal("MonPrice"), text);
  return text.append("元/月");
}

// Fills the plan's name, or the agent's own for it, and answers the price text that goes with it.
std::string fill_name(site::Repeat& html, Connection& db, std::string_view agent_user,
                      Recordset& plan) {
  // QUIRK: an agent's monthly price shows where the master has one, whatever the agent's is.
  const bool monthly = above(plan.field("MonPrice"), 0);
  const auto own = agent_user.empty()
                       ? nullptr
                       : row_if_any(db, host_price_sql(agent_user, joined(plan.field("Id"), "")));
  if (own == nullptr) {
    html.fill("HostName", plan, plan.ordinal("HostName"));
    return price_text(plan, monthly);
  }
  html.fill("HostName", *own, own->ordinal("AgentSetName"));
  std::string price = price_text(*own, monthly);
  own->close();
  return price;
}

std::string limit_text(const Value& limit, std::string_view unit) {
  if (equals(to_number(limit), kUnlimited)) return "无限制";
  return joined(limit, unit);
}

std::string info_html(Recordset& plan) {
  std::string html;
  if (!plan.append_field_text(plan.ordinal("HostInfo"), html)) raise(errors::kInvalidNull);
  site::replace_all(html, "\r", "<br>");
  return html;
}

std::string pool_limit(Connection& db, const Value& mode) {
  std::string limit;
  append_looked_up(limit, db, pool_limit_sql(joined(mode, "")));
  return limit.append("%");
}

std::string free_mail(Connection& db, const Value& id) {
  if (!differs_from(id, 0)) return "无";
  const std::string number = joined(id, "");
  std::string link = "<a href='/mail/mail.asp?id=";
  link.append(number).append("'>");
  append_looked_up(link, db, mail_name_sql(number));
  return link.append("</a>");
}

// Nothing where the only name is Null.
std::optional<std::string> free_databases(Connection& db, Recordset& plan) {
  constexpr std::string_view kNone = "无";
  const Value sql_id = plan.field("freeMsSql");
  const Value my_sql_id = plan.field("freeMySql");
  std::string names(kNone);
  bool some = true;
  if (differs_from(sql_id, 0)) {
    names.clear();
    some = append_looked_up(names, db, sql_name_sql(joined(sql_id, "")));
  }
  if (differs_from(my_sql_id, 0)) {
    const bool joins = some && names != kNone;
    if (joins) {
      names.append("/");
    } else {
      names.clear();
    }
    some = append_looked_up(names, db, my_sql_name_sql(joined(my_sql_id, ""))) || joins;
  }
  return some ? std::optional(std::move(names)) : std::nullopt;
}

void fill_plan(site::Repeat& html, Connection& db, std::string_view agent_user, Recordset& plan) {
  const auto fill = [&](std::string_view tag) { html.fill(tag, plan, plan.ordinal(tag)); };
  const std::string price = fill_name(html, db, agent_user, plan);
  fill("HostSpace");
  html.fill("HostPrice", price);
  fill("id");
  fill("HostNo");
  html.fill("HostInfo", info_html(plan));
  html.fill("MaxConnections", limit_text(plan.field("MaxConnections"), " 个"));
  fill("Scriptmaps");
  html.fill("MaxBandwidth", limit_text(plan.field("MaxBandwidth"), " KB/S"));
  fill("vPathNo");
  html.fill("CPU", pool_limit(db, plan.field("AppModeName")));
  html.fill("FreeMail", free_mail(db, plan.field("freeMail")));
  const auto databases = free_databases(db, plan);
  if (databases) {
    html.fill("FreeDB", *databases);
  } else {
    html.fill("FreeDB", Value::null());
  }
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
  fill_plan(html, db, agent_user.view(), *plan);
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
