#include "tests/plain/menu.h"

#include "tests/plain/repeat.h"
#include "value/conversions.h"

namespace rk::plain {

std::string menu_categories(const std::string& item, const std::vector<MenuCategory>& rows,
                            const std::string& current, const std::string& mark) {
  std::string items;
  for (const MenuCategory& row : rows) {
    items += item;
    const std::string id = joined_text(row[0]).string();
    fill_tag(items, "ItemId", row[0]);
    fill_tag(items, "ItemName", row[1]);
    fill_tag(items, std::string("NowMunVal_Shop_").append(id),
             id == current ? Value::text(mark) : Value());
    const std::string link = joined_text(row[2]).string();
    if (!link.empty()) {
      items = replaced(items, std::string("/shop?Id=").append(id), link + "\" target=\"_blank");
    }
  }
  return replaced(items + item, item, "");
}

std::string menu_entries(std::string menu, const std::string& current, const std::string& mark) {
  for (const char* name : {"Index", "Domain", "Host", "DataBase", "Mail"}) {
    fill_tag(menu, std::string("NowMunVal_").append(name),
             Value::text(name == current ? mark : ""));
  }
  return menu;
}

}  // namespace rk::plain
