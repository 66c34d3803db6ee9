// Show_HostList beside a hand-written loop over SQLite that makes the same bytes: the same
// statements prepared once, template folder, count and overrides included, one read transaction,
// appends into one buffer.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "catalogue/host_list.h"

namespace rk::bench {
namespace {

constexpr std::string_view kHead =
    "\r\n<div class=\"plans\" style=\"line-height:30px\">\r\n<ul><!--HostList For Index-->";
constexpr std::string_view kTail = "<!--End HostList For Index--></ul>\r\n";
constexpr char kTemplate[] =
    "<!--HostList Style-->\r\n"
    "<div class=\"plans\" style=\"line-height:{ListLineHeight}px\">\r\n"
    "<ul><!--HostList For Index-->\r\n"
    "<li id=\"plan-{HostListId}\" style=\"line-height:{ConLineHeight}px\">\r\n"
    "<h3>{HostList_HostName}</h3>\r\n"
    "<p>空间 {HostList_HostSpace}，连接 {MaxConnections}，数据库 {DataBase}，脚本 "
    "{Scriptmaps}</p>\r\n"
    "<p>年付 {Price} 元，月付 {MonPrice} 元 <a href=\"/host/ShowHost.asp?id={HostListId}\">"
    "详情</a></p>\r\n"
    "</li>\r\n"
    "<!--End HostList For Index--></ul>\r\n"
    "<p><a href=\"?ServerId={ServerId}&amp;Page={Page-1}\">上一页</a> {Page}/{PageCount} "
    "<a href=\"?ServerId={ServerId}&amp;Page={Page+1}\">下一页</a></p>\r\n"
    "</div>\r\n"
    "<!--End HostList Style-->\r\n";

BenchSite& site_of(int plans) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[plans];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(hosting_plans(plans));
    site->put_template("Host-HostList-LitInfo.html", kTemplate);
  }
  return *site;
}

catalogue::HostListParameters parameters(int page_size, const char* agent) {
  return {.Style = Value(),
          .ListNum = Value::text("0"),
          .NewLineNum = Value::text("4"),
          .LineCode = Value::text("</ul><ul>"),
          .OrderType = Value::text("Id"),
          .ConLineHeight = Value::text("26"),
          .ListLineHeight = Value::text("30"),
          .PageSize = Value::long_integer(page_size),
          .Agent_User = Value::text(agent)};
}

// The floor's statements, prepared once.
class Floor {
 public:
  Floor(sqlite3* db, bool agent, int page_size)
      : page_(db),
        count_(db, agent ? "Select Count(*) From Rk_HostList Where AgentS=1"
                         : "Select Count(*) From Rk_HostList"),
        plans_(db, std::string("Select Id,HostSpace,HostName,Scriptmaps,MaxConnections,"
                               "MaxBandwidth,Price,MonPrice,freeMail,freeMsSql,freeMySql "
                               "From Rk_HostList ") +
                       (agent ? "Where AgentS=1 " : "") + "Order By Id Desc Limit " +
                       std::to_string(page_size)),
        price_(db,
               "Select AgentSetName,Price,MonPrice From Rk_AgentPriceSet Where AgentUser='blue' "
               "And MastId=? And PriceType='Host'"),
        agent_(agent),
        page_size_(page_size) {}

  std::string show() {
    page_.begin();
    page_.find_folder();
    count_.step();
    const std::int64_t count = count_.number(0);
    count_.reset();
    std::string out;
    out.reserve(4096);
    out += kHead;
    append_plans(out, count);
    const std::string pages = std::to_string((count + page_size_ - 1) / page_size_);
    out += kTail;
    out.append("<p><a href=\"?ServerId=&amp;Page=1\">上一页</a> 1/").append(pages);
    out += " <a href=\"?ServerId=&amp;Page=2\">下一页</a></p>\r\n</div>\r\n";
    page_.commit();
    return out;
  }

 private:
  void append_plans(std::string& out, std::int64_t count) {
    bool sql = false;
    bool my_sql = false;
    for (std::int64_t shown = 1; plans_.step(); ++shown) {
      const bool own = agent_ && own_price();
      const Statement& offer = own ? price_ : plans_;
      sql = sql || plans_.number(9) != 0;
      my_sql = my_sql || plans_.number(10) != 0;
      out.append("\r\n<li id=\"plan-").append(plans_.text(0));
      out.append("\" style=\"line-height:26px\">\r\n<h3>").append(offer.text(own ? 0 : 2));
      out.append("</h3>\r\n<p>空间 ").append(plans_.text(1)).append("，连接 ");
      out.append(plans_.number(4) == 9999 ? "无限制" : plans_.text(4)).append("，数据库 Access");
      out.append(sql ? "/Sql" : "").append(my_sql ? "/MySql" : "").append("，脚本 ");
      out.append(plans_.text(3)).append("</p>\r\n<p>年付 ");
      append_number(out, offer.real(own ? 1 : 6));
      out.append(" 元，月付 ");
      const double month = offer.real(own ? 2 : 7);
      if (month > 0) {
        append_number(out, month);
      } else {
        out.append("-");
      }
      out.append(" 元 <a href=\"/host/ShowHost.asp?id=").append(plans_.text(0));
      out.append("\">详情</a></p>\r\n</li>\r\n");
      if (shown % 4 == 0 && shown < count) out.append("</ul><ul>");
      if (own) price_.reset();
    }
    plans_.reset();
  }

  bool own_price() {
    price_.bind(1, plans_.number(0));
    if (price_.step()) return true;
    price_.reset();
    return false;
  }

  FloorPage page_;
  Statement count_, plans_, price_;
  const bool agent_;
  const int page_size_;
};

void host_list(benchmark::State& state, int plans, int shown, const char* agent) {
  BenchSite& site = site_of(plans);
  const auto given = parameters(shown, agent);
  if (catalogue::Show_HostList(site.new_page(), given).view() !=
      Floor(site.floor(), *agent != '\0', shown).show()) {
    state.SkipWithError("the floor makes other bytes");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(catalogue::Show_HostList(site.new_page(), given));
  }
}

void host_list_floor(benchmark::State& state, int plans, int shown, const char* agent) {
  Floor floor(site_of(plans).floor(), *agent != '\0', shown);
  for (auto _ : state) benchmark::DoNotOptimize(floor.show());
}

void add(const std::string& name, int plans, int shown, const char* agent) {
  benchmark::RegisterBenchmark(("host_list_" + name).c_str(), host_list, plans, shown, agent);
  benchmark::RegisterBenchmark(("host_list_" + name + "_floor").c_str(), host_list_floor, plans,
                               shown, agent);
}

const bool kAdded = [] {
  add("20_of_1000", 1000, 20, "");
  add("20_of_1000_agent", 1000, 20, "blue");
  add("20_of_20000", 20000, 20, "");
  add("all_of_1000", 1000, 1000, "");
  add("all_of_5000", 5000, 5000, "");
  add("all_of_20000", 20000, 20000, "");
  return true;
}();

}  // namespace
}  // namespace rk::bench
