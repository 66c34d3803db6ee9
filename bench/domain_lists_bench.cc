// Show_DomainPriceList and Show_sDomainList beside hand-written loops over SQLite that make the
// same bytes. 20, 200 and 2,000 suffixes, for the master and for an agent.
#include <algorithm>
#include <iterator>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "bench/bench_site.h"
#include "bench/measure.h"
#include "catalogue/domain_lists.h"

namespace rk::bench {
namespace {

constexpr char kTemplate[] =
    "<!--PriceList Style-->\r\n<table>\r\n<tr><th>后缀</th><th>注册</th><th>续费</th></tr>\r\n"
    "<!--Loop--><tr id=\"domain-{Id}\"><td>{Domain}</td><td>{Price}</td><td>{UpdatePrice}</td>"
    "<td><a href=\"/domain/buy.asp?id={id}\">注册</a></td></tr>\r\n<!--End Loop-->"
    "</table>\r\n<!--End PriceList Style-->\r\n";

BenchSite& site_of(int rows) {
  static std::map<int, std::unique_ptr<BenchSite>> sites;
  std::unique_ptr<BenchSite>& site = sites[rows];
  if (site == nullptr) {
    site = std::make_unique<BenchSite>(whole_catalogue(rows));
    site->put_template("Domain-PriceList.html", kTemplate);
  }
  return *site;
}

class PriceFloor {
 public:
  PriceFloor(sqlite3* db, bool agent)
      : page_(db),
        domains_(db, std::string("Select Domain,Money,UpdateMoney,Id From Rk_DomainList") +
                         (agent ? " Where AgentS=1" : "") + " Order By IdKey Desc"),
        price_(db,
               "Select Price,UpdatePrice From Rk_AgentPriceSet Where PriceType='Domain' And "
               "AgentUser='blue' And MastId=?"),
        agent_(agent) {}

  std::string show() {
    std::string out;
    out.reserve(4096);
    page_.begin();
    page_.find_folder();
    out += "\r\n<table>\r\n<tr><th>后缀</th><th>注册</th><th>续费</th></tr>\r\n<!--Loop-->";
    while (domains_.step()) append_domain(out);
    domains_.reset();
    page_.commit();
    return out += "<!--End Loop--></table>\r\n";
  }

 private:
  void append_domain(std::string& out) {
    price_.bind(1, domains_.number(3));
    const bool own = agent_ && price_.step();
    out.append("<tr id=\"domain-").append(domains_.text(3)).append("\"><td>");
    out.append(domains_.text(0)).append("</td><td>");
    append_number(out, own ? price_.real(0) : domains_.real(1));
    out.append("</td><td>");
    append_number(out, own ? price_.real(1) : domains_.real(2));
    out.append("</td><td><a href=\"/domain/buy.asp?id=").append(domains_.text(3));
    out.append("\">注册</a></td></tr>\r\n");
    price_.reset();
  }

  FloorPage page_;
  Statement domains_, price_;
  const bool agent_;
};

class BoxFloor {
 public:
  BoxFloor(sqlite3* db, bool agent)
      : page_(db),
        domains_(db, std::string("Select Type,DefaultCheck From Rk_DomainList") +
                         (agent ? " Where AgentS=1" : "") + " Order By IdKey Desc") {}

  std::string show() {
    std::string out;
    out.reserve(4096);
    page_.begin();
    while (domains_.step()) {
      const std::string_view type = domains_.text(0);
      out += "<div style=\"width:90px;height:24px;float:left;\"><input type=checkbox ";
      if (domains_.number(1) != 0) out += "checked";
      out += " value=\"yes\" name=\"";
      std::copy_if(type.begin(), type.end(), std::back_inserter(out),
                   [](char c) { return c != '.'; });
      out.append("\">").append(type).append("</div>");
    }
    domains_.reset();
    page_.commit();
    return out += "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";
  }

 private:
  FloorPage page_;
  Statement domains_;
};

void add(int rows, bool agent) {
  const std::string size = "_" + std::to_string(rows) + (agent ? "_agent" : "");
  const Value user = Value::text(agent ? "blue" : "");
  add_measure(
      "domain_price_list" + size,
      [=] {
        return catalogue::Show_DomainPriceList(site_of(rows).new_page(), Value(), Value(), user);
      },
      [=] { return PriceFloor(site_of(rows).floor(), agent); });
  add_measure(
      "domain_boxes" + size,
      [=, given = catalogue::DomainBoxParameters{.TopNum = Value::text("0"),
                                                 .InputWidth = Value::text("90"),
                                                 .InputHeight = Value::text("24"),
                                                 .DomainType = Value(),
                                                 .OrderType = Value::text("IdKey"),
                                                 .Agent_User = user}] {
        return catalogue::Show_sDomainList(site_of(rows).new_page(), given);
      },
      [=] { return BoxFloor(site_of(rows).floor(), agent); });
}

const bool kAdded = [] {
  for (const int rows : {20, 200, 2000}) {
    add(rows, false);
    add(rows, true);
  }
  return true;
}();

}  // namespace
}  // namespace rk::bench
