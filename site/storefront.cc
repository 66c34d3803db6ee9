#include "site/storefront.h"

#include <vector>

#include "value/conversions.h"
#include "value/text_functions.h"

namespace rk::site {

namespace {

using platform::Connection;
using platform::Recordset;
using platform::SqlText;

constexpr std::string_view kActiveTemplateSql =
    "Select [templatePath] From [Rk_Template] Where [UseThis]=1";
constexpr std::string_view kMasterDomainSql = "Select Top 1 SiteDomain From SysTem";

std::string agent_template_sql(std::string_view agent_user) {
  return std::string("Select template From Rk_AgentSet Where AgentUser='")
      .append(agent_user)
      .append("'");
}

std::string template_of_id_sql(std::string_view id) {
  return std::string("Select [templatePath] From [Rk_Template] Where Id=").append(id);
}

// The first row's field as text, Null as nothing; 3021 where there is no row.
std::string first_text(Connection& db, std::string sql, std::string_view field) {
  const auto rows = db.execute(std::move(sql));
  std::string text;
  rows->append_field_text(rows->ordinal(field), text);
  rows->close();
  return text;
}

bool is_master_site(std::string_view site_domain, std::string_view host) {
  return site_domain.empty() || site_domain.find(host) != std::string_view::npos;
}

bool lists_host(std::string_view domains, std::string_view host) {
  for (std::size_t from = 0;;) {
    const std::size_t comma = domains.find(',', from);
    if (lower_case(domains.substr(from, comma - from)) == host) return true;
    if (comma == std::string_view::npos) return false;
    from = comma + 1;
  }
}

// The agent whose storefront's domain the host is, or nothing.
std::string agent_of_host(Connection& db, std::string_view host) {
  const auto rows = db.execute(agents_of_host_sql(host));
  const std::size_t user = rows->ordinal("AgentUser");
  const std::size_t domain = rows->ordinal("AgentDomain");
  std::string agent_user;
  for (; !rows->eof(); rows->move_next()) {
    const std::string domains = joined_text(rows->field(domain)).string();
    if (!lists_host(domains, host)) continue;
    agent_user = joined_text(rows->field(user)).string();
    // QUIRK: a list of domains does not end the walk, so the last list that holds the host wins,
    // but the first single domain does.
    if (domains.find(',') == std::string::npos) break;
  }
  rows->close();
  return agent_user;
}

std::string agent_folder(Connection& db, std::string_view agent_user) {
  const std::string id = first_text(db, agent_template_sql(agent_user), "template");
  return first_text(db, template_of_id_sql(id), "templatePath");
}

std::string folder_of_request(const PageContext& page, Connection& db) {
  std::string folder = first_text(db, std::string(kActiveTemplateSql), "templatePath");
  const std::string host =
      lower_case(joined_text(page.request().server_variable("HTTP_HOST")).view());
  const std::string site_domain = first_text(db, std::string(kMasterDomainSql), "SiteDomain");
  if (is_master_site(site_domain, host)) return folder;
  const std::string agent_user = agent_of_host(db, host);
  if (agent_user.empty()) return folder;
  return agent_folder(db, agent_user);
}

}  // namespace

std::unique_ptr<Connection> open_database(const PageContext& page) {
  auto db = page.server().create_connection();
  db->open(joined_text(page.application().value("Rk_ConnStr")).view());
  return db;
}

SqlText agents_of_host_sql(std::string_view host) {
  SqlText sql("Select [AgentUser],[AgentDomain] From Rk_AgentSet Where [AgentDomain] Like '%");
  sql.add_outside(host).add("%'");
  return sql;
}

std::string GetTempPath(const PageContext& page) {
  const auto db = open_database(page);
  std::string folder;
  {
    const platform::ReadScope one_view(*db);
    folder = folder_of_request(page, *db);
  }
  db->close();
  std::string path = "/Template/" + folder;
  if (!folder.ends_with('/')) path += '/';
  return path;
}

std::string GetScriptPath(const PageContext& page) {
  const std::string script = joined_text(page.request().server_variable("SCRIPT_NAME")).string();
  const std::size_t first = script.find('/');
  const std::size_t last = script.rfind('/');
  if (first == last) return {};
  return script.substr(first, last + 1 - first);
}

}  // namespace rk::site
