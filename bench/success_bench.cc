// Show_SuccessPageList over 1,000 and over 100,000 cases, 20 a page: the first, the middle and the
// last page. The list of pages that it offers to choose from grows with the cases, so the floor, a
// hand-written loop over SQLite that makes the same bytes, is taken for both lengths.
#include <benchmark/benchmark.h>

#include <map>
#include <memory>
#include <string>

#include "bench/bench_site.h"
#include "shop/success.h"

namespace rk::bench {
namespace {

constexpr int kCasesAPage = 20;
constexpr char kTemplate[] =
    "<!--Style-->\r\n<ul class=\"cases\"><!--Loop-->\r\n"
    "<li><a href=\"{SiteUrl}\"><img src=\"{PicUrl}\" alt=\"\">{SiteName}</a><p>{Info}</p></li>"
    "<!--End Loop-->\r\n</ul>\r\n{PageSelect}\r\n<!--End Style-->";

// Every tenth case is an agent's. `cases`: those of the master site.
std::string cases_of(int cases) {
  return "With Recursive n(n) As (Select 1 Union All Select n + 1 From n Where n < " +
         std::to_string(cases * 10 / 9) +
         ") Insert Into Rk_Success (SiteName, SiteUrl, Info, PicUrl, succlass, AgentUser) Select "
         "'客户网站 ' || n, 'http://site' || n || '.example/', '品牌展示与在线订购', "
         "'/images/' || (n % 7) || '.jpg', '商城', Case When n % 10 = 9 Then 'blue' End From n;";
}

BenchSite& site_of(int cases) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[cases];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(cases_of(cases));
    site->put_template("User-Success-Info.html", kTemplate);
  }
  return *site;
}

shop::SuccessPageParameters parameters() {
  return {.Style = Value(),
          .PageNumber = Value::long_integer(kCasesAPage),
          .NewLineNum = Value::text("4"),
          .LineCode = Value::text("</ul><ul>"),
          .OrderType = Value::text("Id"),
          .Agent_User = Value()};
}

// The first page by hand; counted once, as the library may keep its count too.
class Floor {
 public:
  explicit Floor(sqlite3* db)
      : begin_(db, "Begin"),
        commit_(db, "Commit"),
        folder_(db, "Select templatePath From Rk_Template Where UseThis=1"),
        domain_(db, "Select SiteDomain From SysTem Limit 1"),
        count_(db, "Select Count(*) From Rk_Success Where AgentUser='' Or AgentUser Is Null"),
        rows_(db,
              "Select SiteUrl,PicUrl,SiteName,Info From Rk_Success Where AgentUser='' Or "
              "AgentUser Is Null Order By Id Desc Limit " +
                  std::to_string(kCasesAPage)) {
    count_.step();
    pages_ = (count_.number(0) + kCasesAPage - 1) / kCasesAPage;
    count_.reset();
  }

  std::string show() {
    run(begin_);
    run(folder_);
    run(domain_);
    std::string out;
    out.reserve(8192 + static_cast<std::size_t>(pages_) * 72);
    out += "\r\n<ul class=\"cases\"><!--Loop-->";
    for (int shown = 1; rows_.step(); ++shown) {
      out.append("\r\n<li><a href=\"").append(rows_.text(0)).append("\"><img src=\"");
      out.append(rows_.text(1)).append("\" alt=\"\">").append(rows_.text(2)).append("</a><p>");
      out.append(rows_.text(3)).append("</p></li>");
      if (shown % 4 == 0 && shown < kCasesAPage) out.append("</ul><ul>");
    }
    rows_.reset();
    out += "<!--End Loop-->\r\n</ul>\r\n";
    append_pages(out);
    out += "\r\n";
    run(commit_);
    return out;
  }

 private:
  static void run(Statement& statement) {
    statement.step();
    statement.reset();
  }

  void append_pages(std::string& out) const {
    const std::string count = std::to_string(pages_);
    out.append("<p align=\"center\"> 共").append(count).append("页 当前第1页 ");
    out.append("<a href=\"success.asp?page=1&Type=\">首页</a>上一页");
    out.append("<a href=success.asp?page=2&Type=>下一页</a><a href=success.asp?page=");
    out.append(count).append("&Type=>尾页</a> </font>");
    out.append("<select name=\"page\" class=\"bottom\" onchange=location.href=this.value>");
    for (std::int64_t n = 1; n <= pages_; ++n) {
      const std::string number = std::to_string(n);
      out.append("<option value=\"success.asp?Page=").append(number).append("\"");
      out.append(n == 1 ? " selected>" : ">").append(number).append("</option>");
    }
    out.append("</select></p>");
  }

  Statement begin_, commit_, folder_, domain_, count_, rows_;
  std::int64_t pages_ = 0;
};

void success_page(benchmark::State& state, int cases, int number) {
  BenchSite& site = site_of(cases);
  site.put_query("page", std::to_string(number));
  const auto given = parameters();
  const Text first = shop::Show_SuccessPageList(site.new_page(), given);
  if (number == 1 && first.view() != Floor(site.floor()).show()) {
    state.SkipWithError("the floor makes other bytes");
    return;
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(shop::Show_SuccessPageList(site.new_page(), given));
  }
}

void success_page_floor(benchmark::State& state, int cases) {
  Floor floor(site_of(cases).floor());
  for (auto _ : state) benchmark::DoNotOptimize(floor.show());
}

void add(const std::string& name, int cases, int number) {
  benchmark::RegisterBenchmark(("success_" + name).c_str(), success_page, cases, number);
}

void add_floor(const std::string& name, int cases) {
  benchmark::RegisterBenchmark(("success_" + name + "_floor").c_str(), success_page_floor, cases);
}

const bool kAdded = [] {
  add("first_of_1000", 1000, 1);
  add_floor("first_of_1000", 1000);
  add("last_of_1000", 1000, 50);
  add("first_of_100000", 100000, 1);
  add_floor("first_of_100000", 100000);
  add("middle_of_100000", 100000, 2500);
  add("last_of_100000", 100000, 5000);
  return true;
}();

}  // namespace
}  // namespace rk::bench
