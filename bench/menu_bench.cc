// Show_Menu with few and many shop categories, without links of their own and with, beside a
// hand-written loop over SQLite that makes the same bytes.
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "site/menu.h"

namespace rk::bench {
namespace {

constexpr std::string_view kHead =
    "<nav>\r\n<ul>\r\n<li><a href=\"/index.asp\">首页</a></li>\r\n"
    "<li><a href=\"/domain/domain.asp\">域名</a></li>\r\n"
    "<li><a href=\"/host/index.asp\" class=\"now\">虚拟主机</a></li>\r\n"
    "<li><a href=\"/database/index.asp\">数据库</a></li>\r\n"
    "<li><a href=\"/mail/mail.asp\">企业邮局</a></li>\r\n<!--ShopItem-->";
constexpr std::string_view kTail = "<!--End ShopItem--></ul>\r\n</nav>\r\n";
constexpr char kTemplate[] =
    "<nav>\r\n<ul>\r\n<li><a href=\"/index.asp\"{NowMunVal_Index}>首页</a></li>\r\n"
    "<li><a href=\"/domain/domain.asp\"{NowMunVal_Domain}>域名</a></li>\r\n"
    "<li><a href=\"/host/index.asp\"{NowMunVal_Host}>虚拟主机</a></li>\r\n"
    "<li><a href=\"/database/index.asp\"{NowMunVal_DataBase}>数据库</a></li>\r\n"
    "<li><a href=\"/mail/mail.asp\"{NowMunVal_Mail}>企业邮局</a></li>\r\n<!--ShopItem-->"
    "<li><a href=\"/shop?Id={ItemId}\"{NowMunVal_Shop_{ItemId}}>{ItemName}</a></li>\r\n"
    "<!--End ShopItem--></ul>\r\n</nav>\r\n";

std::string shop_categories(int n, bool links) {
  return "With Recursive item(n) As (Select 1 Union All Select n + 1 From item Where n < " +
         std::to_string(n) +
         ") Insert Into Rk_ShopItem (Id, ItemName, Link, ParentID, Depth, sysType) Select n, "
         "'商品分类 ' || n, " +
         (links ? "'http://shop.example/' || n" : "Null") + ", 0, 0, 'RkHost' From item;";
}

BenchSite& site_of(int categories, bool links) {
  static std::map<std::pair<int, bool>, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[{categories, links}];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(shop_categories(categories, links));
    site->put_template("Menu.html", kTemplate);
    site->put_server_variable("script_name", "/host/index.asp");
  }
  return *site;
}

class Floor {
 public:
  explicit Floor(sqlite3* db)
      : page_(db),
        categories_(db,
                    "Select Id,ItemName,Link From Rk_ShopItem Where (AgentUser='' Or AgentUser Is "
                    "Null) And Depth=0 And sysType='RkHost'") {}

  std::string show() {
    page_.begin();
    page_.find_folder();
    std::string out;
    out.reserve(4096);
    out += kHead;
    while (categories_.step()) {
      out += "<li><a href=\"";
      if (categories_.text(2).empty()) {
        out.append("/shop?Id=").append(categories_.text(0)).append("\"");
      } else {
        out.append(categories_.text(2)).append("\" target=\"_blank\"");
      }
      out.append(">").append(categories_.text(1)).append("</a></li>\r\n");
    }
    categories_.reset();
    page_.commit();
    return out += kTail;
  }

 private:
  FloorPage page_;
  Statement categories_;
};

void add(const std::string& name, int categories, bool links) {
  add_measure(
      name,
      [categories, links] {
        return site::Show_Menu(site_of(categories, links).new_page(), Value::text(" class=\"now\""),
                               Value());
      },
      [categories, links] { return Floor(site_of(categories, links).floor()); });
}

const bool kAdded = [] {
  add("menu_5", 5, false);
  add("menu_500", 500, false);
  add("menu_5000", 5000, false);
  add("menu_5_links", 5, true);
  add("menu_500_links", 500, true);
  add("menu_5000_links", 5000, true);
  return true;
}();

}  // namespace
}  // namespace rk::bench
