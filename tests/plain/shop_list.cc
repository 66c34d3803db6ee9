#include "tests/plain/shop_list.h"

#include "site/storefront.h"
#include "tests/plain/repeat.h"
#include "value/comparison.h"
#include "value/conversions.h"

namespace rk::plain {

namespace {

std::string set_tags(const std::string& text, const std::string& name, const Value& content) {
  if (content.is_null()) return "";
  return replaced(text, "{" + name + "}", joined_text(content).string());
}

std::string text_of(const Value& value) {
  return joined_text(value).string();
}

Value dash_for_null(const Value& price) {
  return price.is_null() ? Value::text("-") : price;
}

struct Goods {
  std::string loop_template;
  std::string text;
};

void list_goods(Goods& goods, platform::Connection& db, const shop::ShopListParameters& p,
                const std::string& list) {
  const auto rows = db.open_recordset(shop::goods_sql(p, list), platform::CursorType::Keyset,
                                      platform::LockType::Optimistic);
  const std::int64_t n = rows->record_count();
  double counter = 0;
  for (std::int64_t i = 1; !rows->eof(); ++i, rows->move_next()) {
    if (i < n && text_of(p.NewsLineNum) != "0") {
      counter += 1;
      if (counter == to_double(p.NewsLineNum)) {
        goods.text += text_of(p.LineCode);
        counter = 0;
      }
    }
    for (const char* name : {"Id", "ShopName", "DanWei", "shInfo"}) {
      goods.text = set_tags(goods.text, name, rows->field(name));
    }
    for (const char* name : {"Price", "MonPrice", "ThMonPrice", "HfyPrice"}) {
      goods.text = set_tags(goods.text, name, dash_for_null(rows->field(name)));
    }
    goods.text += goods.loop_template;
  }
  rows->close();
  goods.text = replaced(goods.text, goods.loop_template, "");
}

}  // namespace

// One rule told from its first step to its last, unbroken.
// NOLINTNEXTLINE(readability-function-size)
std::string shop_list(const site::PageContext& page, const shop::ShopListParameters& p) {
  const std::string folder = site::GetTempPath(page);
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const std::string file = text_of(page.application().value("Rk_TP_" + folder + "Shop-List.html"));
  const std::string style = text_of(p.Style);
  const std::string serv_day = cut(file, "<!--Shop ServDay Style" + style + "-->",
                                   "<!--End Shop ServDay Style" + style + "-->");
  const std::string no_serv_day = cut(file, "<!--Shop NoServDay Style" + style + "-->",
                                      "<!--End Shop NoServDay Style" + style + "-->");
  const auto rows =
      db->open_recordset(shop::shop_categories_sql(p, text_of(page.request().query("Id"))),
                         platform::CursorType::Keyset, platform::LockType::Optimistic);
  std::string result;
  Goods goods;
  for (; !rows->eof(); rows->move_next()) {
    const Value flag = rows->field("ServDay");
    const std::string block = !flag.is_null() && to_boolean(flag) ? serv_day : no_serv_day;
    const std::string id = text_of(rows->field("id"));
    result += set_tags(block, "ParentItemName", rows->field("ItemName"));
    result = set_tags(result, "PagesID", Value::text("sp" + id));
    const std::string child_str = text_of(rows->field("ChildStr"));
    if (child_str.find(',') == std::string::npos) {
      result = set_tags(result, "ShopInfo", rows->field("Info"));
      const std::string top = cut(result, "<!--Pages Top-->", "<!--End Pages Top-->");
      goods.loop_template = cut(result, "<!--Loop-->", "<!--End Loop-->");
      goods.text = goods.loop_template;
      list_goods(goods, *db, p, child_str);
      result = replaced(result, "<!--Pages Top-->" + top + "<!--End Pages Top-->", "");
      result =
          replaced(result, "<!--Loop-->" + goods.loop_template + "<!--End Loop-->", goods.text);
      continue;
    }
    const std::string top = cut(result, "<!--Pages Top-->", "<!--End Pages Top-->");
    const std::string menu_template =
        cut(top, "<!--Pages MenuLoop-->", "<!--End Pages MenuLoop-->");
    std::string menu = menu_template;
    const std::string panel_template =
        set_tags(cut(block, "<!--Pages ConLoop-->", "<!--End Pages ConLoop-->"), "PagesID",
                 Value::text("sp" + id));
    std::string panels = panel_template;
    const auto children = db->execute(shop::sub_categories_sql(shop::child_ids(child_str, id)));
    for (int k = 0; !children->eof(); ++k, children->move_next()) {
      menu = set_tags(menu, "LitItemName", children->field("ItemName"));
      menu = set_tags(menu, "MenuId", Value::long_integer(k));
      menu = set_tags(menu, "MenuStyle", Value::text(k == 0 ? "h1" : "h2"));
      menu += menu_template;
      panels = set_tags(panels, "PtbodyStyle", Value::text(k == 0 ? "" : "display:none;"));
      panels = set_tags(panels, "ShopInfo", children->field("Info"));
      goods.loop_template = cut(result, "<!--Loop-->", "<!--End Loop-->");
      goods.text = goods.loop_template;
      list_goods(goods, *db, p, text_of(children->field("ChildStr")));
      panels =
          replaced(panels, "<!--Loop-->" + goods.loop_template + "<!--End Loop-->", goods.text);
      panels += panel_template;
    }
    menu = replaced(menu, menu_template, "");
    const std::string new_top =
        replaced(top, "<!--Pages MenuLoop-->" + menu_template + "<!--End Pages MenuLoop-->", menu);
    result = replaced(result, "<!--Pages Top-->" + top + "<!--End Pages Top-->", new_top);
    panels = replaced(panels, panel_template, "");
    result = replaced(result, "<!--Pages ConLoop-->" + panel_template + "<!--End Pages ConLoop-->",
                      panels);
  }
  result = set_tags(result, "ListLineHeight", p.ListLineHeight);
  result = set_tags(result, "ConLineHeight", p.ListLineHeight);
  return replaced(result, goods.loop_template, goods.text);
}

}  // namespace rk::plain
