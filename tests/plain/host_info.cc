#include "tests/plain/host_info.h"

#include "tests/plain/repeat.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::plain {

namespace {

bool is_some(const Value& number) {
  return !number.is_null() && to_double(number) != 0;
}

std::string limited(const Value& limit, const std::string& unit) {
  if (!limit.is_null() && to_double(limit) == 9999) return "无限制";
  return plain_text(limit) + unit;
}

std::string price_text(const HostInfoCase& given) {
  const Value& master_month = given.plan.at("MonPrice");
  const bool own = given.for_agent && !given.own.empty();
  std::string text = plain_text(own ? given.own[1] : given.plan.at("Price")) + "元/年 ";
  if (!master_month.is_null() && to_double(master_month) > 0) {
    text += plain_text(own ? given.own[2] : master_month) + "元/月";
  }
  return text;
}

std::string mail_text(const HostInfoCase& given) {
  const Value& id = given.plan.at("freeMail");
  if (!is_some(id)) return "无";
  return "<a href='/mail/mail.asp?id=" + plain_text(id) + "'>" + plain_text(given.mail_name) +
         "</a>";
}

Value databases(const HostInfoCase& given) {
  const bool sql = is_some(given.plan.at("freeMsSql"));
  const bool my_sql = is_some(given.plan.at("freeMySql"));
  if (sql && my_sql && !given.sql_name.is_null() && plain_text(given.sql_name) != "无") {
    return Value::text(plain_text(given.sql_name) + "/" + plain_text(given.my_sql_name));
  }
  if (my_sql) return given.my_sql_name;
  return sql ? given.sql_name : Value::text("无");
}

}  // namespace

std::string host_info(const HostInfoCase& given) {
  const auto& plan = given.plan;
  const bool own = given.for_agent && !given.own.empty();
  const Value& update = plan.at("canupdate");
  std::string html = given.file;
  fill_tag(html, "HostName", own ? given.own[0] : plan.at("HostName"));
  fill_tag(html, "HostSpace", plan.at("HostSpace"));
  fill_tag(html, "HostPrice", Value::text(price_text(given)));
  fill_tag(html, "id", plan.at("Id"));
  fill_tag(html, "HostNo", plan.at("HostNo"));
  fill_tag(html, "HostInfo", Value::text(replaced(plain_text(plan.at("HostInfo")), "\r", "<br>")));
  fill_tag(html, "MaxConnections", Value::text(limited(plan.at("MaxConnections"), " 个")));
  fill_tag(html, "Scriptmaps", plan.at("Scriptmaps"));
  fill_tag(html, "MaxBandwidth", Value::text(limited(plan.at("MaxBandwidth"), " KB/S")));
  fill_tag(html, "vPathNo", plan.at("vPathNo"));
  fill_tag(html, "CPU", Value::text(plain_text(given.cpu_limit) + "%"));
  fill_tag(html, "FreeMail", Value::text(mail_text(given)));
  fill_tag(html, "FreeDB", databases(given));
  fill_tag(html, "Update",
           Value::text(!update.is_null() && update.as_boolean() ? "支持" : "不支持"));
  fill_tag(html, "TestDay", plan.at("TestDay"));
  return html;
}

}  // namespace rk::plain
