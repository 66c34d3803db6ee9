#include "catalogue/selectors.h"

#include "catalogue/style_block.h"
#include "platform/database.h"
#include "site/storefront.h"
#include "value/conversions.h"
#include "value/text_functions.h"

namespace rk::catalogue {

namespace {

using platform::Connection;
using platform::Recordset;

enum ProductField : std::size_t { kId, kName };

// The products of one table: its queries, and what stands around each option's id and name.
struct ProductTable {
  std::string_view sql;
  std::string_view sql_for_agent;
  std::string_view price_type;
  std::string_view option;
  bool option_has_id;
  std::string_view before_name;
};

constexpr ProductTable kHosts{
    .sql = "Select [ID],[HostName] From [Rk_HostList]",
    .sql_for_agent = "Select [ID],[HostName] From [Rk_HostList] Where [AgentS]=1",
    .price_type = " And [PriceType]='Host'",
    .option = "  <option value=\"/Host/ShowHost.asp?id=",
    .option_has_id = true,
    .before_name = "\">┠"};
constexpr ProductTable kSqlDatabases{
    .sql = "Select [ID],[DbName] From [Rk_SqlList] Where [freeSql]=0",
    .sql_for_agent = "Select [ID],[DbName] From [Rk_SqlList] Where [freeSql]=0 And [AgentS]=1",
    .price_type = " And [PriceType]='Sql'",
    .option = "  <option value=\"/DataBase/Index.asp",
    .option_has_id = false,
    .before_name = "\">"};
constexpr ProductTable kMySqlDatabases{
    .sql = "Select [ID],[DbName] From [Rk_MySqlList] Where [freeSql]=0",
    .sql_for_agent = "Select [ID],[DbName] From [Rk_MySqlList] Where [freeSql]=0 And [AgentS]=1",
    .price_type = " And [PriceType]='MySql'",
    .option = "  <option value=\"/DataBase/Index.asp",
    .option_has_id = false,
    .before_name = "\">"};
constexpr ProductTable kMails{
    .sql = "Select [ID],[MailName] From [Rk_MailList] Where [freeMail]=0",
    // QUIRK: this one text names the agents' column without brackets.
    .sql_for_agent = "Select [ID],[MailName] From [Rk_MailList] Where [freeMail]=0 And AgentS=1",
    .price_type = " And [PriceType]='Mail'",
    .option = "  <option value=\"/Mail/Mail.asp?id=",
    .option_has_id = true,
    .before_name = "\">┠"};

std::string own_name_sql(std::string_view agent_user, std::string_view id,
                         std::string_view price_type) {
  std::string sql;
  sql.reserve(160);
  sql.append("Select [AgentSetName] From [Rk_AgentPriceSet] Where [AgentUser]='")
      .append(agent_user)
      .append("' And [MastId]=")
      .append(id)
      .append(price_type);
  return sql;
}

// The product's name, or the agent's own for it.
void append_name(std::string& html, Connection& db, std::string_view agent_user,
                 std::string_view id, std::string_view price_type, Recordset& product) {
  const auto own =
      agent_user.empty() ? nullptr : row_if_any(db, own_name_sql(agent_user, id, price_type));
  if (own == nullptr) {
    product.append_field_text(kName, html);
    return;
  }
  own->append_field_text(0, html);
  own->close();
}

void append_options(std::string& html, Connection& db, const ProductTable& table,
                    std::string_view agent_user) {
  const auto rows = db.execute(std::string(agent_user.empty() ? table.sql : table.sql_for_agent));
  std::string id;
  for (; !rows->eof(); rows->move_next()) {
    id.clear();
    rows->append_field_text(kId, id);
    html.append(table.option);
    if (table.option_has_id) html.append(id);
    html.append(table.before_name);
    append_name(html, db, agent_user, id, table.price_type, *rows);
    html.append("</option>\r\n");
  }
  rows->close();
}

std::string link_start(const ServerListParameters& parameters) {
  std::string start = "<div style=\"width:";
  append_text(start, parameters.Width);
  start.append("px;height:");
  append_text(start, parameters.sHeight);
  start.append("px;float:left;\"><a href=\"");
  append_text(start, parameters.ShowPage);
  return start.append("?ServerId=");
}

std::string_view class_type_of(std::string_view page) {
  const std::string lowered = lower_case(page);
  if (lowered == "/host") return "host";
  if (lowered == "/mail/mail.asp") return "mail";
  if (lowered == "/database") return "sql";
  return {};
}

std::string product_select(Connection& db, const Value& Agent_User) {
  const Text agent = joined_text(Agent_User);
  std::string html =
      "<select size=\"1\" name=\"D1\" onchange=location.href=this.value style=\"padding-left: 4px; "
      "padding-right: 4px; padding-top: 1px; padding-bottom: 1px\">\r\n"
      "  <option>产品服务快速通道</option>\r\n"
      "  <option value=\"/Host\">＝＝虚拟主机＝＝</option>\r\n";
  append_options(html, db, kHosts, agent.view());
  // QUIRK: this path has a dot where those of the databases have a slash.
  html.append("  <option value=\"/DataBase.Index.asp\">＝＝数据库＝＝</option>\r\n");
  append_options(html, db, kSqlDatabases, agent.view());
  append_options(html, db, kMySqlDatabases, agent.view());
  html.append("  <option value=\"/Mail/Mail.asp\">＝＝企业邮局＝＝</option>\r\n");
  append_options(html, db, kMails, agent.view());
  return html.append("</select>");
}

std::string class_links(Connection& db, const ServerListParameters& parameters) {
  const std::string_view class_type = class_type_of(joined_text(parameters.ShowPage).view());
  const Text agent = joined_text(parameters.Agent_User);
  const auto rows = db.execute(product_classes_sql(class_type, agent.view()));
  std::string html;
  const std::string start = rows->eof() ? std::string() : link_start(parameters);
  for (; !rows->eof(); rows->move_next()) {
    html.append(start);
    rows->append_field_text(kId, html);
    html.append("\">");
    rows->append_field_text(kName, html);
    html.append("</a></div>");
  }
  rows->close();
  return html;
}

}  // namespace

std::string ShowPro_List(const site::PageContext& page, const Value& Agent_User) {
  return site::read_region(page, [&](Connection& db) { return product_select(db, Agent_User); });
}

std::string Show_ServerList(const site::PageContext& page, const ServerListParameters& parameters) {
  std::string html =
      site::read_region(page, [&](Connection& db) { return class_links(db, parameters); });
  return html.append("<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>");
}

std::string product_classes_sql(std::string_view class_type, std::string_view agent_user) {
  std::string sql = "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='";
  sql.append(class_type);
  if (agent_user.empty()) return sql.append("' And (AgentUser='' Or AgentUser Is Null)");
  return sql.append("' And AgentUser='").append(agent_user).append("'");
}

}  // namespace rk::catalogue
