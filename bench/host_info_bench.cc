// Show_HostInfo beside a hand-written page that makes the same bytes out of the same five tables:
// one plan of 1,000, for the master and for an agent.
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "catalogue/host_info.h"

namespace rk::bench {
namespace {

constexpr char kTemplate[] =
    "<article class=\"plan\">\r\n<h1>{HostName}</h1>\r\n<p class=\"price\">{HostPrice}</p>\r\n"
    "<table>\r\n<tr><th>编号</th><td>{HostNo}</td></tr>\r\n"
    "<tr><th>空间</th><td>{HostSpace}</td></tr>\r\n"
    "<tr><th>连接数</th><td>{MaxConnections}</td></tr>\r\n"
    "<tr><th>带宽</th><td>{MaxBandwidth}</td></tr>\r\n"
    "<tr><th>脚本</th><td>{Scriptmaps}</td></tr>\r\n"
    "<tr><th>可绑定目录</th><td>{vPathNo}</td></tr>\r\n"
    "<tr><th>处理器</th><td>{CPU}</td></tr>\r\n"
    "<tr><th>赠送邮局</th><td>{FreeMail}</td></tr>\r\n"
    "<tr><th>赠送数据库</th><td>{FreeDB}</td></tr>\r\n"
    "<tr><th>在线升级</th><td>{Update}</td></tr>\r\n"
    "<tr><th>试用</th><td>{TestDay} 天</td></tr>\r\n</table>\r\n"
    "<p>{HostInfo}</p>\r\n<p><a href=\"/contact.asp?plan=H{id}\">购买</a></p>\r\n</article>\r\n";

BenchSite& plans() {
  static const std::unique_ptr<BenchSite> site = [] {
    auto made = std::make_unique<BenchSite>(whole_catalogue(1000));
    made->put_template("Host-ShowHost-Info.html", kTemplate);
    made->put_query("id", "501");
    return made;
  }();
  return *site;
}

class Floor {
 public:
  Floor(sqlite3* db, bool agent)
      : page_(db),
        plan_(db, std::string("Select * From Rk_HostList Where Id=501") +
                      (agent ? " And AgentS=1" : "")),
        price_(db,
               "Select AgentSetName,Price,MonPrice From Rk_AgentPriceSet Where AgentUser='blue' "
               "And MastId=501 And PriceType='Host'"),
        pool_(db, "Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName=?"),
        mail_(db, "Select MailName From Rk_MailList Where Id=?"),
        sql_(db, "Select DbName From Rk_SqlList Where Id=?"),
        my_sql_(db, "Select DbName From Rk_MySqlList Where Id=?"),
        agent_(agent) {}

  std::string show() {
    std::string out;
    out.reserve(2048);
    page_.begin();
    page_.find_folder();
    plan_.step();
    append_head(out);
    append_limits(out);
    append_extras(out);
    plan_.reset();
    page_.commit();
    return out;
  }

 private:
  // Columns of Rk_HostList in the order of the schema.
  enum Column : int {
    kName = 1,
    kSpace,
    kScriptmaps,
    kMaxConnections,
    kMaxBandwidth,
    kPrice,
    kMonPrice,
    kFreeMail,
    kFreeMsSql,
    kFreeMySql,
    kHostNo = 13,
    kHostInfo,
    kVPathNo,
    kAppModeName,
    kTestDay,
    kCanUpdate
  };

  static void append_row(std::string& out, std::string_view head, std::string_view text) {
    out.append("<tr><th>").append(head).append("</th><td>").append(text).append("</td></tr>\r\n");
  }
  static std::string limit(const Statement& plan, int column, std::string_view unit) {
    if (plan.number(column) == 9999) return "无限制";
    return std::string(plan.text(column)).append(unit);
  }

  void append_head(std::string& out) {
    const bool own = agent_ && price_.step();
    const Statement& offer = own ? price_ : plan_;
    out.append("<article class=\"plan\">\r\n<h1>").append(offer.text(own ? 0 : kName));
    out.append("</h1>\r\n<p class=\"price\">");
    append_number(out, offer.real(own ? 1 : kPrice));
    out.append("元/年 ");
    if (plan_.real(kMonPrice) > 0) {
      append_number(out, offer.real(own ? 2 : kMonPrice));
      out.append("元/月");
    }
    out.append("</p>\r\n<table>\r\n");
    price_.reset();
  }

  void append_limits(std::string& out) {
    append_row(out, "编号", plan_.text(kHostNo));
    append_row(out, "空间", plan_.text(kSpace));
    append_row(out, "连接数", limit(plan_, kMaxConnections, " 个"));
    append_row(out, "带宽", limit(plan_, kMaxBandwidth, " KB/S"));
    append_row(out, "脚本", plan_.text(kScriptmaps));
    append_row(out, "可绑定目录", plan_.text(kVPathNo));
    pool_.bind(1, plan_.text(kAppModeName));
    pool_.step();
    append_row(out, "处理器", std::string(pool_.text(0)).append("%"));
    pool_.reset();
  }

  std::string_view looked_up(Statement& statement, int column) {
    statement.bind(1, plan_.number(column));
    statement.step();
    return statement.text(0);
  }

  void append_extras(std::string& out) {
    std::string mail = "<a href='/mail/mail.asp?id=";
    mail.append(plan_.text(kFreeMail)).append("'>").append(looked_up(mail_, kFreeMail));
    append_row(out, "赠送邮局", mail.append("</a>"));
    std::string databases(looked_up(sql_, kFreeMsSql));
    append_row(out, "赠送数据库", databases.append("/").append(looked_up(my_sql_, kFreeMySql)));
    append_row(out, "在线升级", plan_.number(kCanUpdate) != 0 ? "支持" : "不支持");
    append_row(out, "试用", std::string(plan_.text(kTestDay)).append(" 天"));
    out.append("</table>\r\n<p>");
    for (const char c : plan_.text(kHostInfo)) {
      if (c == '\r') {
        out.append("<br>");
      } else {
        out.push_back(c);
      }
    }
    out.append("</p>\r\n<p><a href=\"/contact.asp?plan=H").append(plan_.text(0));
    out.append("\">购买</a></p>\r\n</article>\r\n");
    for (Statement* statement : {&mail_, &sql_, &my_sql_}) statement->reset();
  }

  FloorPage page_;
  Statement plan_, price_, pool_, mail_, sql_, my_sql_;
  const bool agent_;
};

const bool kAdded = [] {
  for (const bool agent : {false, true}) {
    add_measure(
        agent ? "host_info_agent" : "host_info",
        [user = Value::text(agent ? "blue" : "")] {
          return catalogue::Show_HostInfo(plans().new_page(), user);
        },
        [agent] { return Floor(plans().floor(), agent); });
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
