// ShowPro_List and Show_ServerList beside hand-written loops over SQLite that make the same bytes:
// the jump list of 1,000 products, and 20 and 200 product classes.
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "catalogue/selectors.h"

namespace rk::bench {
namespace {

// Four tables of products.
constexpr int kProductsOfAKind = 250;

BenchSite& site_of(int rows) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[rows];
  if (site == nullptr) site = std::make_unique<BenchSite>(whole_catalogue(rows));
  return *site;
}

class JumpFloor {
 public:
  JumpFloor(sqlite3* db, bool agent)
      : page_(db),
        hosts_(db, std::string("Select Id,HostName From Rk_HostList") +
                       (agent ? " Where AgentS=1" : "")),
        sqls_(db, std::string("Select Id,DbName From Rk_SqlList Where freeSql=0") +
                      (agent ? " And AgentS=1" : "")),
        my_sqls_(db, std::string("Select Id,DbName From Rk_MySqlList Where freeSql=0") +
                         (agent ? " And AgentS=1" : "")),
        mails_(db, std::string("Select Id,MailName From Rk_MailList Where freeMail=0") +
                       (agent ? " And AgentS=1" : "")),
        name_(db,
              "Select AgentSetName From Rk_AgentPriceSet Where AgentUser='blue' And MastId=? And "
              "PriceType=?"),
        agent_(agent) {}

  std::string show() {
    std::string out;
    out.reserve(4096);
    page_.begin();
    out +=
        "<select size=\"1\" name=\"D1\" onchange=location.href=this.value style=\"padding-left: "
        "4px; padding-right: 4px; padding-top: 1px; padding-bottom: 1px\">\r\n"
        "  <option>产品服务快速通道</option>\r\n"
        "  <option value=\"/Host\">＝＝虚拟主机＝＝</option>\r\n";
    append(out, hosts_, "Host", "/Host/ShowHost.asp?id=", "\">┠");
    out += "  <option value=\"/DataBase.Index.asp\">＝＝数据库＝＝</option>\r\n";
    append(out, sqls_, "Sql", "/DataBase/Index.asp", "\">");
    append(out, my_sqls_, "MySql", "/DataBase/Index.asp", "\">");
    out += "  <option value=\"/Mail/Mail.asp\">＝＝企业邮局＝＝</option>\r\n";
    append(out, mails_, "Mail", "/Mail/Mail.asp?id=", "\">┠");
    page_.commit();
    return out += "</select>";
  }

 private:
  void append(std::string& out, Statement& rows, std::string_view type, std::string_view address,
              std::string_view before_name) {
    name_.bind(2, type);
    while (rows.step()) {
      name_.bind(1, rows.number(0));
      const bool own = agent_ && name_.step();
      out.append("  <option value=\"").append(address);
      if (address.back() == '=') out.append(rows.text(0));
      out.append(before_name).append(own ? name_.text(0) : rows.text(1));
      out.append("</option>\r\n");
      name_.reset();
    }
    rows.reset();
  }

  FloorPage page_;
  Statement hosts_, sqls_, my_sqls_, mails_, name_;
  const bool agent_;
};

class ClassFloor {
 public:
  ClassFloor(sqlite3* db, bool agent)
      : page_(db),
        classes_(db,
                 std::string("Select Id,ClassName From Rk_ProClass Where ClassType='host' And ") +
                     (agent ? "AgentUser='blue'" : "(AgentUser='' Or AgentUser Is Null)")) {}

  std::string show() {
    std::string out;
    out.reserve(4096);
    page_.begin();
    while (classes_.step()) {
      out += "<div style=\"width:90px;height:24px;float:left;\"><a href=\"/host?ServerId=";
      out.append(classes_.text(0)).append("\">").append(classes_.text(1)).append("</a></div>");
    }
    classes_.reset();
    page_.commit();
    return out += "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";
  }

 private:
  FloorPage page_;
  Statement classes_;
};

void add_classes(int rows, bool agent) {
  const std::string name = "server_list_" + std::to_string(rows);
  add_measure(
      agent ? name + "_agent" : name,
      [rows,
       given = catalogue::ServerListParameters{.Width = Value::text("90"),
                                               .sHeight = Value::text("24"),
                                               .ShowPage = Value::text("/host"),
                                               .Agent_User = Value::text(agent ? "blue" : "")}] {
        return catalogue::Show_ServerList(site_of(rows).new_page(), given);
      },
      [rows, agent] { return ClassFloor(site_of(rows).floor(), agent); });
}

const bool kAdded = [] {
  for (const bool agent : {false, true}) {
    add_measure(
        agent ? "pro_list_1000_agent" : "pro_list_1000",
        [user = Value::text(agent ? "blue" : "")] {
          return catalogue::ShowPro_List(site_of(kProductsOfAKind).new_page(), user);
        },
        [agent] { return JumpFloor(site_of(kProductsOfAKind).floor(), agent); });
    add_classes(20, agent);
    add_classes(200, agent);
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
