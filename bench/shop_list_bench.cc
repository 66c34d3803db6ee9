// Show_ShopList beside a hand-written loop over SQLite that makes the same bytes: the same
// statements prepared once, template folder included, one read transaction, appends into one
// buffer. Every second category shows its goods in two tabs, the others in one list.
#include <benchmark/benchmark.h>

#include <charconv>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "bench/bench_site.h"
#include "shop/shop_list.h"

namespace rk::bench {
namespace {

// The style block, cut where the floor puts something in.
constexpr std::string_view kHead = "\r\n<section id=\"";
constexpr std::string_view kTitle = "\"><h2>";
constexpr std::string_view kBody = "</h2>\r\n";
constexpr std::string_view kTabs = "<ul class=\"tabs\">";
constexpr std::string_view kTail = "\r\n</section>\r\n";
constexpr char kTemplate[] =
    "<!--Shop ServDay Style-->\r\n"
    "<section id=\"{PagesID}\"><h2>{ParentItemName}</h2>\r\n"
    "<!--Pages Top--><ul class=\"tabs\"><!--Pages MenuLoop-->"
    "<li class=\"{MenuStyle}\"><a href=\"#{MenuId}\">{LitItemName}</a></li>"
    "<!--End Pages MenuLoop--></ul><!--End Pages Top-->"
    "<!--Pages ConLoop--><div style=\"{PtbodyStyle}\"><p>{ShopInfo}</p><ul><!--Loop-->\r\n"
    "<li style=\"line-height:30px\"><h3><a href=\"/shop/item.asp?Id={Id}\">{ShopName}</a></h3>\r\n"
    "<p>{shInfo}</p><p>年付 {Price} 元/{DanWei}，半年 {HfyPrice} 元，季付 {ThMonPrice} 元，"
    "月付 {MonPrice} 元</p></li>\r\n"
    "<!--End Loop--></ul></div><!--End Pages ConLoop-->\r\n"
    "</section>\r\n"
    "<!--End Shop ServDay Style-->\r\n";

// Categories 1 to n; the even ones have two sub-categories, which share the goods.
std::string shop_of(int categories, int goods) {
  const std::string n = std::to_string(categories);
  const std::string each = std::to_string(goods);
  return "With Recursive c(n) As (Select 1 Union All Select n + 1 From c Where n < " + n +
         ") Insert Into Rk_ShopItem (Id, ItemName, ParentID, Depth, ChildStr, ServDay, Info, "
         "ShowIndex, sysType) Select n, '服务 ' || n, 0, 0, Case When n % 2 = 0 Then n || ',' || "
         "(1000 + n) || ',' || (2000 + n) Else n || '' End, 1, '说明 ' || n, 1, 'RkHost' From c;"
         "Insert Into Rk_ShopItem (Id, ItemName, ParentID, Depth, ChildStr, ServDay, Info, "
         "ShowIndex, sysType) Select k.add_to + c.Id, '分类 ' || k.add_to, c.Id, 1, "
         "k.add_to + c.Id, 1, '分类说明', 0, 'RkHost' From Rk_ShopItem c, "
         "(Select 1000 As add_to Union Select 2000) k Where c.Id % 2 = 0;"
         "With Recursive g(n) As (Select 0 Union All Select n + 1 From g Where n < " +
         std::to_string(categories * goods - 1) +
         ") Insert Into Rk_ShopList (ShopName, ItemId, Price, MonPrice, ThMonPrice, HfyPrice, "
         "DanWei, shInfo) Select '标准服务 ' || n, Case When (n / " +
         each + " + 1) % 2 = 0 Then 1000 + n % 2 * 1000 + n / " + each + " + 1 Else n / " + each +
         " + 1 End, n % 500 + 99.5, Case When n % 3 = 0 Then Null Else n % 50 + 9 End, Null, "
         "n % 90 + 60, '个', '七个工作日内开通，含一年维护' From g;";
}

BenchSite& site_of(int categories, int goods) {
  static std::map<std::pair<int, int>, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[{categories, goods}];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(shop_of(categories, goods));
    site->put_template("Shop-List.html", kTemplate);
  }
  return *site;
}

shop::ShopListParameters parameters() {
  return {.Style = Value(),
          .ShowItems = Value::text("0"),
          .ListNum = Value::text("0"),
          .NewsLineNum = Value::text("4"),
          .LineCode = Value::text("</ul><ul>"),
          .OrderType = Value::text("Id"),
          .ItemOrders = Value::text("Id"),
          .ConLineHeight = Value::text("26"),
          .ListLineHeight = Value::text("30"),
          .showIndex = Value::text("1"),
          .Agent_User = Value::text("")};
}

constexpr char kGoodsSql[] =
    "Select Id,ShopName,shInfo,Price,DanWei,HfyPrice,ThMonPrice,MonPrice From Rk_ShopList Where "
    "ItemId=? And (AgentUser='' Or AgentUser Is Null) Order By Id Desc";

// The floor's statements, prepared once.
class Floor {
 public:
  explicit Floor(sqlite3* db)
      : begin_(db, "Begin"),
        commit_(db, "Commit"),
        folder_(db, "Select templatePath From Rk_Template Where UseThis=1"),
        domain_(db, "Select SiteDomain From SysTem Limit 1"),
        categories_(db,
                    "Select Id,ItemName,Info,ChildStr From Rk_ShopItem Where ShowIndex=1 And "
                    "ParentID=0 And sysType='RkHost' And (AgentUser='' Or AgentUser Is Null) "
                    "Order By Id"),
        children_(db, "Select Id,ItemName,Info From Rk_ShopItem Where Depth=1 And Id In (?,?)"),
        goods_(db, kGoodsSql) {}

  std::string show() {
    run(begin_);
    run(folder_);
    run(domain_);
    std::string out;
    out.reserve(1 << 16);
    while (categories_.step()) {
      out.append(kHead).append("sp").append(categories_.text(0)).append(kTitle);
      out.append(categories_.text(1)).append(kBody);
      if (categories_.text(3).find(',') == std::string_view::npos) {
        out.append("<!--Pages ConLoop-->");
        append_panel(out, "{PtbodyStyle}", categories_.text(2), categories_.number(0));
        out.append("<!--End Pages ConLoop-->");
      } else {
        append_tabs(out, categories_.number(0));
      }
      out.append(kTail);
    }
    categories_.reset();
    run(commit_);
    return out;
  }

 private:
  static void run(Statement& statement) {
    statement.step();
    statement.reset();
  }

  // The header before the panels: both are made in one walk.
  void append_tabs(std::string& out, std::int64_t category) {
    panels_.clear();
    out.append(kTabs);
    children_.bind(1, 1000 + category);
    children_.bind(2, 2000 + category);
    for (int k = 0; children_.step(); ++k) {
      out.append("<li class=\"").append(k == 0 ? "h1" : "h2").append("\"><a href=\"#");
      out.append(std::to_string(k)).append("\">").append(children_.text(1)).append("</a></li>");
      append_panel(panels_, k == 0 ? "" : "display:none;", children_.text(2), children_.number(0));
    }
    children_.reset();
    out.append("</ul>").append(panels_);
  }

  void append_panel(std::string& out, std::string_view style, std::string_view info,
                    std::int64_t item) {
    out.append("<div style=\"").append(style).append("\"><p>").append(info).append("</p><ul>");
    goods_.bind(1, item);
    bool more = goods_.step();
    for (int in_row = 1; more; ++in_row) {
      append_goods(out);
      more = goods_.step();
      if (in_row != 4 || !more) continue;
      out.append("</ul><ul>");
      in_row = 0;
    }
    goods_.reset();
    out.append("</ul></div>");
  }

  void append_goods(std::string& out) {
    out.append("\r\n<li style=\"line-height:30px\"><h3><a href=\"/shop/item.asp?Id=");
    out.append(goods_.text(0)).append("\">").append(goods_.text(1)).append("</a></h3>\r\n<p>");
    out.append(goods_.text(2)).append("</p><p>年付 ");
    append_price(out, 3);
    out.append(" 元/").append(goods_.text(4)).append("，半年 ");
    append_price(out, 5);
    out.append(" 元，季付 ");
    append_price(out, 6);
    out.append(" 元，月付 ");
    append_price(out, 7);
    out.append(" 元</p></li>\r\n");
  }

  void append_price(std::string& out, int column) {
    if (goods_.is_null(column)) {
      out.append("-");
      return;
    }
    char digits[32];
    out.append(digits, std::to_chars(digits, digits + sizeof digits, goods_.real(column)).ptr);
  }

  Statement begin_, commit_, folder_, domain_, categories_, children_, goods_;
  std::string panels_;
};

void shop_list(benchmark::State& state, int categories, int goods) {
  BenchSite& site = site_of(categories, goods);
  const auto given = parameters();
  if (shop::Show_ShopList(site.new_page(), given) != Floor(site.floor()).show()) {
    state.SkipWithError("the floor makes other bytes");
    return;
  }
  for (auto _ : state) benchmark::DoNotOptimize(shop::Show_ShopList(site.new_page(), given));
}

void shop_list_floor(benchmark::State& state, int categories, int goods) {
  Floor floor(site_of(categories, goods).floor());
  for (auto _ : state) benchmark::DoNotOptimize(floor.show());
}

void add(const std::string& name, int categories, int goods) {
  benchmark::RegisterBenchmark(("shop_list_" + name).c_str(), shop_list, categories, goods);
  benchmark::RegisterBenchmark(("shop_list_" + name + "_floor").c_str(), shop_list_floor,
                               categories, goods);
}

const bool kAdded = [] {
  add("5x20", 5, 20);
  add("50x100", 50, 100);
  add("50x200", 50, 200);
  return true;
}();

}  // namespace
}  // namespace rk::bench
