#include "catalogue/domain_lists.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

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

// Columns in the order of each query's select list.
enum DomainField : std::size_t { kDomain, kMoney, kUpdateMoney, kId };
enum OfferField : std::size_t { kPrice, kUpdatePrice };
enum BoxField : std::size_t { kType, kDefaultCheck };

constexpr std::array<std::string_view, 5> kDomainTags{"Domain", "id", "Price", "UpdatePrice", "Id"};

std::unique_ptr<Recordset> own_offer(Connection& db, std::string_view agent_user,
                                     Recordset& domain) {
  if (agent_user.empty()) return nullptr;
  std::string id;
  domain.append_field_text(kId, id);
  return row_if_any(db, own_domain_price_sql(agent_user, id));
}

void fill_domain(site::Repeat& domains, Recordset& domain, Recordset* own) {
  domains.fill("Domain", domain, kDomain);
  // QUIRK: the number has two tags that differ in letter case alone.
  domains.fill("id", domain, kId);
  if (own != nullptr) {
    domains.fill("Price", *own, kPrice);
    domains.fill("UpdatePrice", *own, kUpdatePrice);
  } else {
    domains.fill("Price", domain, kMoney);
    domains.fill("UpdatePrice", domain, kUpdateMoney);
  }
  domains.fill("Id", domain, kId);
}

void fill_domains(site::Repeat& domains, Connection& db, Recordset& rows,
                  std::string_view agent_user) {
  for (; !rows.eof(); rows.move_next()) {
    const auto own = own_offer(db, agent_user, rows);
    fill_domain(domains, rows, own.get());
    if (own != nullptr) own->close();
    domains.next();
  }
}

std::string box_start(const DomainBoxParameters& parameters) {
  std::string start = "<div style=\"width:";
  append_text(start, parameters.InputWidth);
  start.append("px;height:");
  append_text(start, parameters.InputHeight);
  return start.append("px;float:left;\"><input type=checkbox ");
}

// One box: ticked where the suffix is so by default, named by the suffix without its dots. `type`
// is room for the suffix.
void append_box(std::string& html, Recordset& domain, std::string_view start, std::string& type) {
  type.clear();
  if (!domain.append_field_text(kType, type)) raise(errors::kInvalidNull);
  html.append(start);
  if (is_true(domain.field(kDefaultCheck))) html.append("checked");
  html.append(" value=\"yes\" name=\"");
  std::copy_if(type.begin(), type.end(), std::back_inserter(html), [](char c) { return c != '.'; });
  html.append("\">").append(type).append("</div>");
}

Text price_list(const site::PageContext& page, Connection& db, const Value& Style,
                const Value& DomainLanguage, const Value& Agent_User) {
  const Text file = site::template_text(page, "Domain-PriceList.html");
  const std::string_view style =
      style_block(file.view(), "<!--PriceList Style", "<!--End PriceList Style", Style);
  site::Repeat domains(site::cut(style, "<!--Loop-->", "<!--End Loop-->"), kDomainTags);

  const Text agent_user = joined_text(Agent_User);
  const Text language = joined_text(DomainLanguage);
  const auto rows = db.execute(domain_price_list_sql(language.view(), !agent_user.empty()));
  fill_domains(domains, db, *rows, agent_user.view());
  rows->close();

  return domains.into(style);
}

std::string boxes(Connection& db, const DomainBoxParameters& parameters) {
  const auto rows = db.open_recordset(domain_boxes_sql(parameters), platform::CursorType::Keyset,
                                      platform::LockType::Optimistic);
  std::string html;
  const std::string start = rows->eof() ? std::string() : box_start(parameters);
  std::string type;
  for (; !rows->eof(); rows->move_next()) append_box(html, *rows, start, type);
  rows->close();
  return html;
}

}  // namespace

Text Show_DomainPriceList(const site::PageContext& page, const Value& Style,
                          const Value& DomainLanguage, const Value& Agent_User) {
  return site::read_region(page, [&](Connection& db) {
    return price_list(page, db, Style, DomainLanguage, Agent_User);
  });
}

std::string Show_sDomainList(const site::PageContext& page, const DomainBoxParameters& parameters) {
  std::string html = site::read_region(page, [&](Connection& db) { return boxes(db, parameters); });
  return html.append("<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>");
}

std::string domain_price_list_sql(std::string_view language, bool for_agent) {
  const std::string_view and_agents = for_agent ? " And [AgentS]=1" : "";
  if (language == "EN") {
    return std::string(
               "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=0")
        .append(and_agents)
        .append(" Order By IdKey Desc");
  }
  if (language == "CN") {
    return std::string(
               "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=1")
        .append(and_agents)
        .append(" Order By IdKey Desc");
  }
  return std::string("Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList]")
      .append(for_agent ? " Where [AgentS]=1" : "")
      .append(" Order By IdKey Desc");
}

std::string own_domain_price_sql(std::string_view agent_user, std::string_view domain_id) {
  std::string sql;
  sql.reserve(160);
  sql.append(
         "Select [Price],[UpdatePrice],[Id] From [Rk_AgentPriceSet] Where [PriceType]='Domain' "
         "And [AgentUser]='")
      .append(agent_user)
      .append("' And MastId=")
      .append(domain_id);
  return sql;
}

std::string domain_boxes_sql(const DomainBoxParameters& parameters) {
  // QUIRK: without a bound two blanks stand behind "Select".
  std::string sql = "Select ";
  if (to_integer(parameters.TopNum) != 0) {
    sql.append("Top ");
    append_text(sql, parameters.TopNum);
  }
  const bool for_agent = !joined_text(parameters.Agent_User).empty();
  const Text group = joined_text(parameters.DomainType);
  // QUIRK: the Chinese group is "CH" here and "CN" in the price list.
  if (group.view() == "EN") {
    sql.append(" [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=0")
        .append(for_agent ? " And [AgentS]=1" : "");
  } else if (group.view() == "CH") {
    sql.append(" [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=1")
        .append(for_agent ? " And [AgentS]=1" : "");
  } else {
    sql.append(" [Type],[DefaultCheck] From [Rk_DomainList]")
        .append(for_agent ? " Where [AgentS]=1" : "");
  }
  sql.append(" Order By [");
  append_text(sql, parameters.OrderType);
  return sql.append("] Desc");
}

}  // namespace rk::catalogue
