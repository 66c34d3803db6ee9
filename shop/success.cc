#include "shop/success.h"

#include <algorithm>
#include <array>

#include "site/agent_filter.h"
#include "site/repeat.h"
#include "site/shortened.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::shop {

namespace {

void add_box(std::string& html, const Value& width, const Value& height) {
  html.append("<li style=\"width:");
  append_text(html, width);
  html.append("px;height:");
  append_text(html, height);
  html.append("px;float:left;\">");
}

Value class_list(const site::PageContext& page, const Value& agent_user) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(success_item_sql(agent_user));
  Value list = rows->field("succlass");
  rows->close();
  db->close();
  return list;
}

}  // namespace

// --- category links -----------------------------------------------------------------------------

Value Show_SuccessItem(const site::PageContext& page, const Value& Width, const Value& sHeight,
                       const Value& Agent_User) {
  const Text list = to_text(class_list(page, Agent_User));
  if (list.empty()) return {};
  std::string html;
  std::string_view rest = list.view();
  while (!rest.empty()) {
    const std::string_view piece = rest.substr(0, rest.find('|'));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    if (piece.empty()) continue;
    add_box(html, Width, sHeight);
    html.append("<a href=\"success.asp?Type=").append(piece).append("\">").append(piece);
    html.append("</a></li>");
  }
  return Value::text(html);
}

std::string success_item_sql(const Value& agent_user) {
  if (site::is_master(agent_user)) return "Select [succlass] From [System]";
  std::string sql = "Select [succlass] From [Rk_AgentSet] Where [AgentUser]='";
  append_text(sql, agent_user);
  return sql.append("'");
}

// --- the short list -----------------------------------------------------------------------------

std::string Show_SuccessList(const site::PageContext& page,
                             const SuccessListParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(success_list_sql(parameters));
  std::string html;
  for (; !rows->eof(); rows->move_next()) {
    const Value name = rows->field("SiteName");
    add_box(html, parameters.Width, parameters.titHeight);
    append_text(html, parameters.TitleType);
    html.append("<a href=\"");
    append_text(html, rows->field("SiteUrl"));
    html.append("\" target=\"_blank\" title=\"");
    append_text(html, name);
    html.append("\">");
    if (site::longer_than(name, parameters.TitleLength)) {
      html.append(site::first_units(name, parameters.TitleLength).view()).append("...");
    } else {
      append_text(html, name);
    }
    html.append("</a></li>");
  }
  rows->close();
  db->close();
  return html;
}

std::string success_list_sql(const SuccessListParameters& parameters) {
  std::string sql = "Select Top ";
  append_text(sql, parameters.SuccNum);
  sql.append(" [Id],[SiteName],[SiteUrl] From [Rk_Success] Where [AgentUser]='");
  if (site::is_master(parameters.Agent_User)) {
    return sql.append("' Or [AgentUser] Is Null Order By [Id] Desc");
  }
  append_text(sql, parameters.Agent_User);
  return sql.append("' Order By [Id] Desc");
}

// --- one page -----------------------------------------------------------------------------------

namespace {

constexpr std::array<std::string_view, 4> kCaseTags{"SiteUrl", "SiteName", "Info", "PicUrl"};

// Moves to the page that the visitor asked for and answers its number.
// QUIRK: past the last page the last is shown, and the number asked for stays.
double turn_to(platform::Recordset& rows, const Value& asked) {
  if (equals(asked, "")) return 1;
  const double page = to_double(asked);
  if (page > rows.page_count()) {
    rows.set_absolute_page(rows.page_count());
  } else if (page <= 1) {
    return 1;
  } else {
    rows.set_absolute_page(to_long(asked));
  }
  return page;
}

void fill_cases(site::Repeat& cases, platform::Recordset& rows,
                const SuccessPageParameters& parameters) {
  if (rows.eof()) return;
  std::array<std::size_t, kCaseTags.size()> columns{};
  std::transform(kCaseTags.begin(), kCaseTags.end(), columns.begin(),
                 [&](std::string_view name) { return rows.ordinal(name); });
  const std::int64_t left = rows.record_count() - rows.absolute_position() + 1;
  const std::int64_t shown = std::min<std::int64_t>(left, rows.page_size());
  const double cases_in_row = to_double(parameters.NewLineNum);
  double in_row = 0;
  for (std::int64_t i = 1; i <= shown; ++i) {
    in_row += 1;
    if (i < shown && in_row == cases_in_row) {
      cases.append(parameters.LineCode);
      in_row = 0;
    }
    for (std::size_t tag = 0; tag < kCaseTags.size(); ++tag) {
      cases.fill(kCaseTags[tag], rows, columns[tag]);
    }
    cases.next();
    // OPTIMIZATION: a move behind the page's last case would read rows that nobody sees.
    if (i < shown) rows.move_next();
  }
}

void add_page_link(std::string& html, double number, std::string_view type) {
  html.append("<a href=success.asp?page=").append(number_text(number)).append("&Type=");
  html.append(type).append(">");
}

// Bytes set aside: of the links, with a short Type, and of an option.
constexpr std::size_t kLongestLinks = 512;
constexpr std::size_t kLongestOption = 72;

std::string navigation(double page, std::int32_t page_count, std::string_view type) {
  const std::string count = std::to_string(page_count);
  std::string html;
  html.reserve(kLongestLinks + static_cast<std::size_t>(page_count) * kLongestOption);
  html.append("<p align=\"center\"> 共");
  html.append(count).append("页 当前第").append(number_text(page)).append("页 ");
  html.append("<a href=\"success.asp?page=1&Type=").append(type).append("\">首页</a>");
  if (page > 1) add_page_link(html, page - 1, type);
  html.append(page > 1 ? "上一页</a>" : "上一页");
  if (page < page_count) add_page_link(html, page + 1, type);
  html.append(page < page_count ? "下一页</a>" : "下一页");
  add_page_link(html, page_count, type);
  // QUIRK: closes a font tag that was never opened.
  html.append("尾页</a> </font>");
  html.append("<select name=\"page\" class=\"bottom\" onchange=location.href=this.value>");
  for (std::int32_t n = 1; n <= page_count; ++n) {
    const std::string number = std::to_string(n);
    // QUIRK: a page chosen here drops the category.
    html.append("<option value=\"success.asp?Page=").append(number).append("\"");
    html.append(n == page ? " selected>" : ">").append(number).append("</option>");
  }
  return html.append("</select></p>");
}

std::string marker(std::string_view start, const Value& style) {
  std::string text(start);
  append_text(text, style);
  return text.append("-->");
}

}  // namespace

Text Show_SuccessPageList(const site::PageContext& page, const SuccessPageParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const Text file = site::template_text(page, "User-Success-Info.html");
  const std::string_view style = site::cut(file.view(), marker("<!--Style", parameters.Style),
                                           marker("<!--End Style", parameters.Style));
  site::Repeat cases(site::cut(style, "<!--Loop-->", "<!--End Loop-->"), kCaseTags);

  const std::string type = joined_text(page.request().query("Type")).string();
  const auto rows = db->open_recordset(success_page_sql(parameters, type),
                                       platform::CursorType::Keyset, platform::LockType::ReadOnly);
  rows->set_page_size(to_long(parameters.PageNumber));
  const double number = turn_to(*rows, page.request().query("Page"));
  const std::int32_t page_count = rows->page_count();
  fill_cases(cases, *rows, parameters);
  rows->close();
  db->close();

  return site::replaced(cases.into(style), "{PageSelect}", navigation(number, page_count, type));
}

platform::SqlText success_page_sql(const SuccessPageParameters& parameters, std::string_view type) {
  const bool master = site::is_master(parameters.Agent_User);
  const Text agent = joined_text(parameters.Agent_User);
  const Text order = joined_text(parameters.OrderType);
  platform::SqlText sql("Select * From [Rk_Success]");
  if (!type.empty()) {
    sql.add(" Where [succlass] like'%").add_outside(type).add("%'");
    sql.add(master ? " And ([AgentUser]='' Or [AgentUser] Is Null)" : " And [AgentUser]='");
  } else {
    sql.add(master ? " Where [AgentUser]='' Or [AgentUser] Is Null" : " Where [AgentUser]='");
  }
  if (!master) sql.add(agent.view()).add("'");
  return sql.add(" Order By [").add(order.view()).add("] Desc");
}

}  // namespace rk::shop
