// Show_SqlList, Show_MySqlList and Show_MailList beside hand-written loops over SQLite that make
// the same bytes: statements prepared once, one read transaction, appends into one buffer. 20, 200
// and 2,000 plans, for the master and for an agent.
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "catalogue/plan_lists.h"

namespace rk::bench {
namespace {

struct List {
  const char* name;
  Text (*show)(const site::PageContext&, const catalogue::PlanListParameters&);
  const char* file;
  const char* word;  // in the markers
  const char* name_tag;
  const char* id_tag;
  const char* sizes;  // the template's markup of the sizes
  const char* plans;  // the floor's statement: Id, name, price, then the sizes
  const char* price;
};

constexpr List kLists[] = {
    {"sql_list", catalogue::Show_SqlList, "DataBase-SqlList-LitInfo.html", "SqlList",
     "{SqlList_SqlName}", "{SqlListId}", "{db_MaxSize} MB，日志 {lg_MaxSize} MB",
     "Select Id,DbName,Price,db_MaxSize,lg_MaxSize From Rk_SqlList Where freeSql=0",
     "Select AgentSetName,Price From Rk_AgentPriceSet Where AgentUser='blue' And MastId=? And "
     "PriceType='Sql'"},
    {"my_sql_list", catalogue::Show_MySqlList, "DataBase-MySqlList-LitInfo.html", "MySqlList",
     "{SqlList_SqlName}", "{SqlListId}", "{db_MaxSize} MB",
     "Select Id,DbName,Price,db_MaxSize From Rk_MySqlList Where freeSql=0",
     "Select AgentSetName,Price From Rk_AgentPriceSet Where AgentUser='blue' And MastId=? And "
     "PriceType='MySql'"},
    {"mail_list", catalogue::Show_MailList, "Mail-MailList-LitInfo.html", "MailList",
     "{MailList_MailName}", "{MailListId}", "{Size} MB",
     "Select Id,MailName,Price,Size From Rk_MailList Where freeMail=0",
     "Select AgentSetName,Price From Rk_AgentPriceSet Where AgentUser='blue' And MastId=? And "
     "PriceType='Mail'"},
};

std::string marker(const List& list, const char* begin, const char* end) {
  return std::string("<!--").append(begin).append(list.word).append(end).append("-->");
}

std::string file_of(const List& list) {
  return marker(list, "", " Style") +
         "\r\n<div class=\"plans\" style=\"line-height:{ListLineHeight}px\">\r\n<ul>" +
         marker(list, "", " For Index") + "\r\n<li id=\"plan-" + list.id_tag +
         "\" style=\"line-height:{ConLineHeight}px\">\r\n<h3>" + list.name_tag +
         "</h3>\r\n<p>空间 " + list.sizes +
         "</p>\r\n<p>年付 {Price} 元 <a href=\"/contact.asp?plan=" + list.id_tag +
         "\">选购</a></p>\r\n</li>\r\n" + marker(list, "End ", " For Index") +
         "</ul>\r\n</div>\r\n" + marker(list, "End ", " Style") + "\r\n";
}

BenchSite& site_of(int rows) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[rows];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(whole_catalogue(rows));
    for (const List& list : kLists) site->put_template(list.file, file_of(list));
  }
  return *site;
}

class Floor {
 public:
  Floor(sqlite3* db, const List& list, bool agent)
      : page_(db),
        plans_(db, std::string(list.plans) + (agent ? " And AgentS=1" : "") + " Order By Id Desc"),
        price_(db, list.price),
        head_("\r\n<div class=\"plans\" style=\"line-height:30px\">\r\n<ul>" +
              marker(list, "", " For Index")),
        tail_(marker(list, "End ", " For Index") + "</ul>\r\n</div>\r\n"),
        has_log_(std::string_view(list.sizes).find("lg_MaxSize") != std::string_view::npos),
        agent_(agent) {}

  std::string show() {
    std::string out;
    out.reserve(4096);
    page_.begin();
    page_.find_folder();
    out += head_;
    // A row is broken once it is known that another plan follows.
    for (int shown = 0; plans_.step(); ++shown) {
      if (shown > 0 && shown % 4 == 0) out.append("</ul><ul>");
      append_plan(out);
    }
    plans_.reset();
    page_.commit();
    return out += tail_;
  }

 private:
  void append_plan(std::string& out) {
    const bool own = agent_ && own_price();
    out.append("\r\n<li id=\"plan-").append(plans_.text(0));
    out.append("\" style=\"line-height:26px\">\r\n<h3>");
    out.append(own ? price_.text(0) : plans_.text(1));
    out.append("</h3>\r\n<p>空间 ").append(plans_.text(3)).append(" MB");
    if (has_log_) out.append("，日志 ").append(plans_.text(4)).append(" MB");
    out.append("</p>\r\n<p>年付 ");
    append_number(out, own ? price_.real(1) : plans_.real(2));
    out.append(" 元 <a href=\"/contact.asp?plan=").append(plans_.text(0));
    out.append("\">选购</a></p>\r\n</li>\r\n");
    if (own) price_.reset();
  }

  bool own_price() {
    price_.bind(1, plans_.number(0));
    if (price_.step()) return true;
    price_.reset();
    return false;
  }

  FloorPage page_;
  Statement plans_, price_;
  const std::string head_, tail_;
  const bool has_log_;
  const bool agent_;
};

catalogue::PlanListParameters parameters(bool agent) {
  return {.Style = Value(),
          .ListNum = Value::text("0"),
          .NewLineNum = Value::text("4"),
          .LineCode = Value::text("</ul><ul>"),
          .OrderType = Value::text("Id"),
          .ConLineHeight = Value::text("26"),
          .ListLineHeight = Value::text("30"),
          .Agent_User = Value::text(agent ? "blue" : "")};
}

void add(const List& list, int rows, bool agent) {
  const std::string name = std::string(list.name) + "_" + std::to_string(rows);
  add_measure(
      agent ? name + "_agent" : name,
      [&list, rows, given = parameters(agent)] {
        return list.show(site_of(rows).new_page(), given);
      },
      [&list, rows, agent] { return Floor(site_of(rows).floor(), list, agent); });
}

const bool kAdded = [] {
  for (const List& list : kLists) {
    for (const int rows : {20, 200, 2000}) {
      add(list, rows, false);
      add(list, rows, true);
    }
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
