#include "widgets/strips.h"

#include <string_view>

#include "platform/database.h"
#include "site/agent_filter.h"
#include "site/shortened.h"
#include "site/storefront.h"
#include "value/comparison.h"
#include "value/conversions.h"
#include "widgets/html.h"

namespace rk::widgets {

namespace {

Text shortened(const Value& name, const Value& length) {
  if (!site::longer_than(name, length)) return joined_text(name);
  Text first = site::first_units(name, length);
  first.append("...");
  return first;
}

// The columns of a table of links, found once a strip.
struct LinkColumns {
  explicit LinkColumns(const platform::Recordset& rows)
      : name(rows.ordinal("linkName")), url(rows.ordinal("linkUrl")) {}
  std::size_t name;
  std::size_t url;
};

void add_link_start(Html& html, platform::Recordset& link, const LinkColumns& columns) {
  html << "<li><a href=\"";
  html.add(link, columns.url) << "\" target=\"_blank\" title=\"";
  html.add(link, columns.name) << "\">";
}

// The height less one; nothing where the height is Null, as a difference with it is Null.
std::string less_one(const Value& height) {
  return height.is_null() ? std::string() : number_text(to_double(height) - 1);
}

void add_marquee(Html& html, std::string_view id, const LinkParameters& parameters) {
  html << "</ul></div><script>new Marquee(\"" << id << "\",0," << parameters.linkHeight << ","
       << parameters.linkWidth << "," << less_one(parameters.linkHeight) << ","
       << parameters.stopTime << ",0,0)</script>";
}

bool is_true(const Value& flag) {
  return !flag.is_null() && to_boolean(flag);
}

void add_partners(Html& html, platform::Recordset& rows, const Value& length) {
  const LinkColumns columns(rows);
  const std::size_t is_picture = rows.ordinal("linkType");
  const std::size_t picture = rows.ordinal("linkPic");
  for (; !rows.eof(); rows.move_next()) {
    // Shortened in every row, so that a wrong length raises where only pictures are shown too.
    const Text name = shortened(rows.field(columns.name), length);
    add_link_start(html, rows, columns);
    if (is_true(rows.field(is_picture))) {
      html << "<img src=\"";
      html.add(rows, picture) << "\" border=\"0\" width=\"88\" height=\"31\">";
    } else {
      html << name.view();
    }
    html << "</a></li>";
  }
}

void add_downloads(Html& html, platform::Recordset& rows, const Value& length) {
  const std::size_t name = rows.ordinal("DownName");
  const std::size_t icon = rows.ordinal("DownICO");
  const std::size_t url = rows.ordinal("DownUrl");
  for (; !rows.eof(); rows.move_next()) {
    html << "<li><span style=\"float:left;\"><img width=\"19\" height=\"19\" src=\"";
    html.add(rows, icon) << "\"></span><span style=\"float:left;\"><a title=\"";
    html.add(rows, name) << "\" href=\"";
    html.add(rows, url) << "\" target=\"_blank\">";
    html << shortened(rows.field(name), length).view() << "</a></span></li>";
  }
}

}  // namespace

// --- partner links ------------------------------------------------------------------------------

std::string Show_Links(const site::PageContext& page, const LinkParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(links_sql(parameters));
  Html html;
  html << "<Style>#fl_CSS1 li{text-align:center;float:left;width:" << parameters.NumWidth
       << "px;height:31px;}#fl_CSS1 ul{margin:0px;}#fl_CSS1{width:" << parameters.linkWidth
       << "px;}#fl_CSS1 img{margin-right:2px;}</Style><div id=\"fl_CSS1\"><ul>";
  if (!rows->eof()) add_partners(html, *rows, parameters.sLen);
  add_marquee(html, "fl_CSS1", parameters);
  rows->close();
  db->close();
  return std::move(html).text();
}

std::string links_sql(const LinkParameters& parameters) {
  Html sql;
  sql << "Select Top " << parameters.TopNum
      << " [linkName],[linkUrl],[linkType],[linkPic] From [Rk_Links] Where ([FtpUser]='' Or "
         "[FtpUser] Is Null) And ([AgentUser]='";
  if (site::is_master(parameters.Agent_User)) {
    sql << "' Or [AgentUser] Is Null) And [BePass]=1 Order By [Id] Desc";
  } else {
    sql << parameters.Agent_User << "') And [BePass]=1 Order By [Id] Desc";
  }
  return std::move(sql).text();
}

// --- hosted sites -------------------------------------------------------------------------------

std::string Show_FtpLinks(const site::PageContext& page, const LinkParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(ftp_links_sql(parameters));
  Html html;
  html << "<Style>#fl_CSS li{text-align:center;float:left;width:" << parameters.NumWidth
       << "px;}#fl_CSS ul{margin:0px;}#fl_CSS{width:" << parameters.linkWidth
       << "px;}</Style><div id=\"fl_CSS\"><ul>";
  if (!rows->eof()) {
    const LinkColumns columns(*rows);
    for (; !rows->eof(); rows->move_next()) {
      add_link_start(html, *rows, columns);
      html << shortened(rows->field(columns.name), parameters.sLen).view() << "</a></li>";
    }
  }
  add_marquee(html, "fl_CSS", parameters);
  rows->close();
  db->close();
  return std::move(html).text();
}

std::string ftp_links_sql(const LinkParameters& parameters) {
  Html sql;
  sql << "Select Top " << parameters.TopNum
      << " [linkName],[linkUrl] From [Rk_Links] Where [FtpUser]<>'' And [BePass]=1 And ";
  if (site::is_master(parameters.Agent_User)) {
    sql << "([AgentUser]='' Or [AgentUser] Is Null) Order By [Id] Desc";
  } else {
    sql << "[AgentUser]='" << parameters.Agent_User << "' Order By [Id] Desc";
  }
  return std::move(sql).text();
}

// --- companies ----------------------------------------------------------------------------------

Value Show_NCompany(const site::PageContext& page, const Value& sNum, const Value& sWindth,
                    const Value& ulWidth, const Value& Agent_User) {
  if (!site::is_master(Agent_User)) return {};
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(companies_sql(sNum));
  if (rows->eof()) return {};
  Html html;
  html << "<style>.NC_CSS li{margin-top:5px;margin-bottom:5px;float:left;width:" << sWindth
       << "px;text-align:center;}.NC_CSS{margin:0px;}</style><div style=\"margin:auto; "
          "border-width: 1px;border-style: solid;border-color: #1559AB;width:"
       << ulWidth << "px;padding:5px;\"><ul class=\"NC_CSS\">";
  for (; !rows->eof(); rows->move_next()) {
    html << "<li><a href=\"/NComPany?Id=" << rows->field("Id") << "\">&#9742;"
         << rows->field("City") << "：" << rows->field("Tel") << "</a></li>";
  }
  html << "<li><a href=\"/links/?id=2\">more</a></li></ul></div>";
  rows->close();
  db->close();
  return Value::text(std::move(html).text());
}

std::string companies_sql(const Value& most) {
  Html sql;
  sql << "Select ";
  if (above(most, 0)) sql << "Top " << most;
  sql << " * From [Rk_NCompany] Order By [Id] Desc";
  return std::move(sql).text();
}

// --- downloads ----------------------------------------------------------------------------------

std::string Show_DownLoad(const site::PageContext& page, const Value& ShowNum, const Value& sWidth,
                          const Value& sNum, const Value& Agent_User) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const auto rows = db->execute(downloads_sql(ShowNum, Agent_User));
  Html html;
  html << "<Style>.DL_CSS li{width:" << sWidth
       << "px;float:left;}.DL_CSS{margin:0px;padding-left:10px;}</Style><div><ul "
          "class=\"DL_CSS\">";
  if (!rows->eof()) add_downloads(html, *rows, sNum);
  html << "</ul></div>";
  rows->close();
  db->close();
  return std::move(html).text();
}

std::string downloads_sql(const Value& most, const Value& agent_user) {
  Html sql;
  sql << "Select Top " << most << " * From [Rk_DownLoad] Where [AgentUser]='";
  if (site::is_master(agent_user)) {
    sql << "' Or [AgentUser] Is Null Order By [Id] Desc";
  } else {
    sql << agent_user << "' Order By [Id] Desc";
  }
  return std::move(sql).text();
}

}  // namespace rk::widgets
