// Show_NewsPageList over 1,000 and over 100,000 items: the first, the middle and the last page.
// Both ends are to cost the same however long the list is; the middle pays for its offset.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

#include "bench/bench_site.h"
#include "shop/news.h"

namespace rk::bench {
namespace {

constexpr int kItemsAPage = 20;
constexpr char kNewsSql[] =
    "Select Id,Title,Time From Rk_News Where (AgentUser='' Or AgentUser Is Null) ";

// Every tenth item is an agent's. `items`: those of the master site.
std::string news_of(int items) {
  return "With Recursive n(n) As (Select 1 Union All Select n + 1 From n Where n < " +
         std::to_string(items * 10 / 9) +
         ") Insert Into Rk_News (Type, Title, Time, AgentUser, EveryOne) Select Case When n % 3 = "
         "0 "
         "Then 'help' Else 'news' End, '机房线路升级通知第 ' || n || ' 号', "
         "date('2001-01-01', '+' || (n / 20) || ' days'), Case When n % 10 = 9 Then 'blue' End, 0 "
         "From n;";
}

BenchSite& site_of(int items) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[items];
  if (site == nullptr) site = std::make_unique<BenchSite>(news_of(items));
  return *site;
}

// The first page's bytes by hand: counted once, as the library may keep its count too.
class Floor {
 public:
  explicit Floor(sqlite3* db)
      : begin_(db, "Begin"),
        commit_(db, "Commit"),
        count_(db, "Select Count(*) From Rk_News Where (AgentUser='' Or AgentUser Is Null)"),
        rows_(db, std::string(kNewsSql) + "Order By Id Desc Limit " + std::to_string(kItemsAPage)) {
    count_.step();
    items_ = count_.number(0);
    count_.reset();
  }

  std::string show() {
    begin_.step();
    begin_.reset();
    std::string out;
    out.reserve(8192);
    out +=
        "<table width=\"98%\" border=0 cellpadding=0 cellspacing=0 bgcolor=#ffffff "
        "id=\"table19\">\r\n<tbody>\r\n";
    while (rows_.step()) {
      out.append("<tr> \r\n<td height=\"25\" class=\"td\"> \r\n<a href=\"ShowNews.asp?id=");
      out.append(rows_.text(0)).append("\">").append(rows_.text(1));
      out.append(
          "</a>\u3000<font color=\"#999999\">[</font><font color=\"#999999\" "
          "face=\"arial, helvetica, Arial\">");
      out.append(rows_.text(2)).append("]</font> </td>\r\n</tr>\r\n");
    }
    rows_.reset();
    append_pager(out);
    commit_.step();
    commit_.reset();
    return out;
  }

 private:
  void append_pager(std::string& out) const {
    out +=
        "</tbody>\r\n</table>\r\n<table width=\"98%\" border=\"0\" cellspacing=\"0\" "
        "cellpadding=\"0\" id=\"table20\">\r\n<tr align=\"center\" valign=\"bottom\" "
        "bgcolor=\"#ffffff\">\r\n<td height=\"1\" align=\"center\" valign=\"bottom\" "
        "bgcolor=\"#cccccc\"></td>\r\n</tr>\r\n<tr bgcolor=\"#ffffff\"> \r\n"
        "<td height=\"25\" align=\"center\" class=\"td\">共 ";
    out.append(std::to_string(items_)).append(" 条记录\u3000\u3000第 1/");
    out.append(std::to_string((items_ + kItemsAPage - 1) / kItemsAPage));
    out +=
        "<font color=\"#999999\">上一页</font>\r\n<a href=\"News.asp?page=2&type=\" "
        "style=\"color:000000\">\r\n下一页</a> \r\n</td>\r\n</tr>\r\n</table>\r\n";
  }

  Statement begin_, commit_, count_, rows_;
  std::int64_t items_ = 0;
};

void news_page(benchmark::State& state, int items, int number) {
  BenchSite& site = site_of(items);
  tests::FixedClock clock;
  site.put_query("page", std::to_string(number));
  const std::string first = shop::Show_NewsPageList(site.new_page(), clock, Value());
  if (number == 1 && first != Floor(site.floor()).show()) {
    state.SkipWithError("the floor makes other bytes");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(shop::Show_NewsPageList(site.new_page(), clock, Value()));
  }
}

void news_page_floor(benchmark::State& state, int items) {
  Floor floor(site_of(items).floor());
  for (auto _ : state) benchmark::DoNotOptimize(floor.show());
}

void add(const std::string& name, int items, int number) {
  benchmark::RegisterBenchmark(("news_" + name).c_str(), news_page, items, number);
}

const bool kAdded = [] {
  add("first_of_1000", 1000, 1);
  benchmark::RegisterBenchmark("news_first_of_1000_floor", news_page_floor, 1000);
  add("last_of_1000", 1000, 50);
  add("first_of_100000", 100000, 1);
  add("middle_of_100000", 100000, 2500);
  add("last_of_100000", 100000, 5000);
  return true;
}();

}  // namespace
}  // namespace rk::bench
