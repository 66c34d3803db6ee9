#include "shop/news.h"

#include <cmath>

#include "site/agent_filter.h"
#include "site/shortened.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::shop {

namespace {

// A time with a time of day differs from the bare date, so such an item is never new.
bool is_today(const Value& time, const platform::Clock& clock) {
  const double today = std::floor(clock.now());
  if (time.kind() == Value::Kind::Date) return time.as_date() == today;
  return equals(time, date_text(today));
}

// The three texts that depend on the kind of item; empty for a kind that is none.
struct NewsKind {
  std::string_view kind;
  std::string_view more_link;
  std::string_view more_label;
};

NewsKind kind_of(const Value& types) {
  if (equals(types, "1")) return {"news", "/News/news.asp", "更多新闻"};
  if (equals(types, "0")) return {"help", "/News/news.asp?tp=help", "更多帮助"};
  return {};
}

std::string news_line(platform::Recordset& item, const NewsParameters& parameters,
                      const platform::Clock& clock) {
  const Value title = item.field("title");
  const Value time = item.field("time");
  std::string line = "<tr><td><font color='#ff6600'>·</font> <a href='/News/ShowNews.asp?id=";
  append_text(line, item.field("id"));
  line.append("' title='");
  append_text(line, title);
  line.append("'>").append(site::first_units(title, parameters.lfno).view());
  line.append(site::longer_than(title, parameters.lfno) ? "..</a>" : "</a>");
  if (equals(parameters.swdata, "1")) {
    line.append(" <font color='999999'>[");
    append_text(line, time);
    line.append("]</font>");
  }
  if (is_today(time, clock)) line.append("<img src=/images/i_new.gif border=0>");
  return line.append("</td></tr>");
}

}  // namespace

void getnews(const site::PageContext& page, const platform::Clock& clock,
             const NewsParameters& parameters) {
  const NewsKind kind = kind_of(parameters.types);
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  platform::Response& response = page.response();
  response.write("<table width='100%' border='0' cellspacing='0' cellpadding='3'><tbody>");
  const auto rows = db->open_recordset(getnews_sql(parameters, kind.kind),
                                       platform::CursorType::Keyset, platform::LockType::ReadOnly);
  if (rows->bof() && rows->eof()) response.write("<br><br><center>目前暂无信息！</center>");
  for (; !rows->eof(); rows->move_next()) response.write(news_line(*rows, parameters, clock));
  rows->close();
  std::string end = "<tr><td><p align='right'><a href='";
  end.append(kind.more_link).append("'><img border='0' src='/images/more.gif' title='");
  end.append(kind.more_label).append("'></a></td></tr></tbody></table>");
  response.write(end);
}

std::string getnews_sql(const NewsParameters& parameters, std::string_view kind) {
  std::string sql = "select top ";
  append_text(sql, parameters.nos);
  sql.append(" * from Rk_news where type='").append(kind);
  if (site::is_master(parameters.Agent_User)) {
    return sql.append("' And (AgentUser='' Or AgentUser Is Null) order by id desc");
  }
  sql.append("' And AgentUser='");
  append_text(sql, parameters.Agent_User);
  return sql.append("' order by id desc");
}

// --- the short list -----------------------------------------------------------------------------

namespace {

void add_item(std::string& html, platform::Recordset& item, const NewsListParameters& parameters) {
  const Value title = item.field("title");
  html.append("   <tr>\r\n");
  html.append("       <td><span style=\"float:left;\">");
  append_text(html, parameters.TitleType);
  html.append("<a href=\"/news/shownews.asp?id=");
  append_text(html, item.field("Id"));
  html.append("\" title=\"");
  append_text(html, title);
  html.append("\">");
  // QUIRK: a title of just that length is shown whole and has dots all the same.
  if (site::at_least(title, parameters.TitleLength)) {
    html.append(site::first_units(title, parameters.TitleLength).view()).append("...</a> ");
  } else {
    append_text(html, title);
    html.append("</a> ");
  }
  html.append("</span><span style=\"float:right;\">");
  if (!equals(parameters.ShowTime, "0")) append_text(html, item.field("Time"));
  html.append("</span></td>\r\n");
  html.append("   </tr>\r\n");
}

}  // namespace

std::string Show_NewsList(const site::PageContext& page, const NewsListParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  std::string html = "<table border=\"0\" width=\"100%\" id=\"Rk_News_Fun\" cellpadding=\"";
  append_text(html, parameters.lineheight);
  html.append("\" style=\"border-collapse: collapse\">\r\n");
  const auto rows = db->execute(news_list_sql(parameters));
  for (; !rows->eof(); rows->move_next()) add_item(html, *rows, parameters);
  html.append("   <tr><td align=\"right\"><a href=\"/news/news.asp?type=");
  append_text(html, parameters.NewsType);
  html.append("\">more</a></td></tr>\r\n");
  return html.append("</table>");
}

std::string news_list_sql(const NewsListParameters& parameters) {
  std::string sql = "Select Top ";
  append_text(sql, parameters.NewsNum);
  sql.append(" [title],[Id],[Time] From [Rk_News] Where [Type]='");
  append_text(sql, parameters.NewsType);
  if (site::is_master(parameters.Agent_User)) {
    return sql.append("' And (AgentUser Is Null Or AgentUser='') Order By [Id] Desc");
  }
  sql.append("' And (AgentUser='");
  append_text(sql, parameters.Agent_User);
  return sql.append("' Or EveryOne=1) Order By [Id] Desc");
}

// --- the news page ------------------------------------------------------------------------------

namespace {

constexpr std::int32_t kItemsAPage = 20;
constexpr std::string_view kNoItems = "=== 对不起，暂无记录 ===";

std::string request_text(const site::PageContext& page, std::string_view name) {
  return joined_text(page.request().item(name)).string();
}

void add_page_item(std::string& html, platform::Recordset& item, const platform::Clock& clock) {
  html.append("<tr> \r\n");
  html.append("<td height=\"25\" class=\"td\"> \r\n");
  if (item.bof() && item.eof()) {
    html.append(kNoItems);
  } else {
    html.append("<a href=\"ShowNews.asp?id=");
    append_text(html, item.field("id"));
    html.append("\">");
    append_text(html, item.field("title"));
    html.append(
        "</a>\u3000<font color=\"#999999\">[</font><font color=\"#999999\" "
        "face=\"arial, helvetica, Arial\">");
    const Value time = item.field("time");
    append_text(html, time);
    html.append("]</font>");
    // QUIRK: the tag is left for the page to fill.
    if (is_today(time, clock)) {
      html.append("<img src={templatePath}Images/i_new.gif border=0>");
    }
  }
  html.append(" </td>\r\n");
  html.append("</tr>\r\n");
}

void add_pager_head(std::string& html) {
  html.append("</tbody>\r\n");
  html.append("</table>\r\n");
  html.append(
      "<table width=\"98%\" border=\"0\" cellspacing=\"0\" cellpadding=\"0\" id=\"table20\">\r\n");
  html.append("<tr align=\"center\" valign=\"bottom\" bgcolor=\"#ffffff\">\r\n");
  html.append("<td height=\"1\" align=\"center\" valign=\"bottom\" bgcolor=\"#cccccc\"></td>\r\n");
  html.append("</tr>\r\n");
  html.append("<tr bgcolor=\"#ffffff\"> \r\n");
}

void add_pager_link(std::string& html, double number, std::string_view type) {
  html.append("<a href=\"News.asp?page=").append(number_text(number)).append("&type=");
  html.append(type).append("\" style=\"color:000000\">");
}

// Counts, and links to the pages before and behind.
void add_pager(std::string& html, platform::Recordset& rows, const Value& number,
               std::string_view type) {
  add_pager_head(html);
  html.append("<td height=\"25\" align=\"center\" class=\"td\">共 ");
  html.append(std::to_string(rows.record_count())).append(" 条记录\u3000\u3000第 ");
  append_text(html, number);
  html.append("/").append(std::to_string(rows.page_count()));
  const double page = to_double(number);
  if (!equals(number, "1")) {
    add_pager_link(html, page - 1, type);
    html.append("上一页</a> \r\n");
  } else {
    html.append("<font color=\"#999999\">上一页</font>\r\n");
  }
  rows.set_absolute_page(to_long(Value::real(page + 1)));
  if (!rows.eof()) {
    add_pager_link(html, page + 1, type);
    html.append("\r\n下一页</a> \r\n");
  } else {
    html.append("<font color=\"#999999\">下一页</font>");
  }
  html.append("</td>\r\n");
  html.append("</tr>\r\n");
  html.append("</table>\r\n");
}

}  // namespace

std::string Show_NewsPageList(const site::PageContext& page, const platform::Clock& clock,
                              const Value& Agent_User) {
  const auto db = site::open_database(page);
  std::string html =
      "<table width=\"98%\" border=0 cellpadding=0 cellspacing=0 bgcolor=#ffffff "
      "id=\"table19\">\r\n<tbody>\r\n";
  const std::string type = site::ReStr(page.request().query("type"));
  const platform::ReadScope one_view(*db);
  const auto rows =
      db->open_recordset(news_page_sql(type, Agent_User), platform::CursorType::Keyset,
                         platform::LockType::Optimistic);
  // QUIRK: the table is not closed where there is nothing to show.
  if (rows->record_count() == 0) return html.append(kNoItems);

  rows->set_page_size(kItemsAPage);
  Value number = page.request().item("page");
  if (equals(number, "")) number = Value::integer(1);
  // Items are stored oldest first, so a page is walked backwards from its newest.
  rows->set_absolute_position(to_long(Value::real(static_cast<double>(rows->record_count()) -
                                                  kItemsAPage * (to_double(number) - 1))));
  for (std::int32_t i = 1; i <= kItemsAPage; ++i) {
    add_page_item(html, *rows, clock);
    // OPTIMIZATION: a move before the page's last item would read rows that nobody sees.
    if (i == kItemsAPage) break;
    rows->move_previous();
    if (rows->bof()) break;
  }
  add_pager(html, *rows, number, request_text(page, "type"));
  rows->close();
  return html;
}

platform::SqlText news_page_sql(std::string_view type, const Value& agent_user) {
  const Text agent = joined_text(agent_user);
  if (type.empty() && agent.empty()) {
    return platform::SqlText(
        "select * From Rk_News Where [AgentUser]='' Or [AgentUser] Is Null order by Id");
  }
  if (type.empty()) {
    return platform::SqlText("select * From Rk_News Where AgentUser='")
        .add(agent.view())
        .add("' Or EveryOne=1 order by Id");
  }
  if (agent.empty()) {
    return platform::SqlText("select * From Rk_News where type='")
        .add_outside(type)
        .add("' And ([AgentUser]='' Or [AgentUser] Is Null) order by Id");
  }
  return platform::SqlText("select * From Rk_News Where type='")
      .add_outside(type)
      .add("' And (AgentUser='")
      .add(agent.view())
      .add("' Or EveryOne=1) order by Id");
}

}  // namespace rk::shop
