#include "tests/plain/host_list.h"

#include <algorithm>

#include "tests/plain/repeat.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::plain {

namespace {

struct Pages {
  int count, page, next, previous, first_row;
};

Pages turn(const HostListCase& given, int page_size) {
  const int records = static_cast<int>(given.plans.rows.size());
  Pages at{(records + page_size - 1) / page_size, 1, 1, 0, 0};
  if (!given.page.empty()) {
    at.page = std::stoi(given.page);
    if (at.page > at.count) {
      at.first_row = (at.count - 1) * page_size;
      at.next = at.count;
      at.previous = at.page - 1;
    } else if (at.page <= 0) {
      at.page = at.next = at.previous = 1;
    } else {
      at.first_row = (at.page - 1) * page_size;
      at.next = std::min(at.page + 1, at.count);
      at.previous = at.page - 1;
    }
  }
  if (at.next <= at.page) at.next = at.next + 1;
  if (at.previous == 0) at.previous = 1;
  return at;
}

}  // namespace

std::string host_list(const HostListCase& given) {
  const catalogue::HostListParameters& p = given.parameters;
  const std::string style = plain_text(p.Style);
  std::string block = cut(given.file, "<!--HostList Style" + style + "-->",
                          "<!--End HostList Style" + style + "-->");
  const std::string item = cut(block, "<!--HostList For Index-->", "<!--End HostList For Index-->");
  std::string list = item;

  const int page_size = to_long(p.PageSize);
  const Pages at = turn(given, page_size);
  const int records = static_cast<int>(given.plans.rows.size());
  int rendered = 0;
  int column = 0;
  std::string sql;
  std::string my_sql;
  for (int i = 1; i <= page_size; ++i) {
    const int row = at.first_row + i - 1;
    if (row >= records) break;
    const std::vector<Value>& plan = given.plans.rows[static_cast<std::size_t>(row)];
    ++rendered;
    ++column;
    if (column == to_integer(p.NewLineNum) && rendered < records) {
      list += plain_text(p.LineCode);
      column = 0;
    }
    Value name = plan[2];
    Value price = plan[6];
    Value month_price = plan[7];
    const auto offer = given.offers.find(plain_text(plan[0]));
    if (!plain_text(p.Agent_User).empty() && offer != given.offers.end()) {
      name = offer->second[0];
      price = offer->second[1];
      month_price = offer->second[2];
    }
    fill_tag(list, "HostList_HostName", name);
    if (differs_from(plan[10], 0)) my_sql = "/MySql";
    if (differs_from(plan[9], 0)) sql = "/Sql";
    fill_tag(list, "DataBase", Value::text(std::string("Access").append(sql).append(my_sql)));
    fill_tag(list, "HostList_HostSpace", plan[1]);
    fill_tag(list, "MaxConnections",
             equals(to_number(plan[4]), 9999) ? Value::text("无限制") : plan[4]);
    fill_tag(list, "Scriptmaps", plan[3]);
    fill_tag(list, "HostListId", plan[0]);
    fill_tag(list, "ConLineHeight", p.ConLineHeight);
    fill_tag(list, "Price", price);
    fill_tag(list, "MonPrice", above(month_price, 0) ? month_price : Value::text("-"));
    list += item;
  }
  list = replaced(list, item, "");

  fill_tag(block, "ListLineHeight", p.ListLineHeight);
  fill_tag(block, "PageCount", Value::long_integer(at.count));
  fill_tag(block, "Page", Value::long_integer(at.page));
  fill_tag(block, "Page+1", Value::long_integer(at.next));
  fill_tag(block, "Page-1", Value::long_integer(at.previous));
  fill_tag(block, "PageCount", Value::long_integer(at.count));
  fill_tag(block, "ServerId", Value::text(""));
  return replaced(block, item, list);
}

}  // namespace rk::plain
