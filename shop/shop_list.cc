#include "shop/shop_list.h"

#include <array>
#include <memory>
#include <utility>

#include "shop/settling_text.h"
#include "site/agent_filter.h"
#include "site/repeat.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/comparison.h"
#include "value/conversions.h"
#include "value/script_error.h"

namespace rk::shop {

namespace {

using platform::Connection;
using platform::Recordset;

// Columns in the order in which goods_sql selects them.
enum GoodsField : std::size_t {
  kId,
  kShopName,
  kPrice,
  kMonPrice,
  kDanWei,
  kItemId,
  kShInfo,
  kThMonPrice,
  kHfyPrice
};
// Tags in the order in which a row fills them, with their columns.
constexpr std::array<std::pair<std::string_view, GoodsField>, 4> kGoodsTexts{
    {{"Id", kId}, {"ShopName", kShopName}, {"DanWei", kDanWei}, {"shInfo", kShInfo}}};
constexpr std::array<std::pair<std::string_view, GoodsField>, 4> kGoodsPrices{
    {{"Price", kPrice},
     {"MonPrice", kMonPrice},
     {"ThMonPrice", kThMonPrice},
     {"HfyPrice", kHfyPrice}}};
constexpr std::array<std::string_view, 8> kGoodsTags{"Id",    "ShopName", "DanWei",     "shInfo",
                                                     "Price", "MonPrice", "ThMonPrice", "HfyPrice"};
constexpr std::array<std::string_view, 3> kMenuTags{"LitItemName", "MenuId", "MenuStyle"};
// What is searched in the result and in a category's panels, by its beginning.
constexpr std::array<std::string_view, 4> kResultBeginnings{"{PagesID}", "{ShopInfo}",
                                                            "<!--Pages Top-->", "<!--Loop-->"};
constexpr std::array<std::string_view, 3> kPanelBeginnings{"{PtbodyStyle}", "{ShopInfo}",
                                                           "<!--Loop-->"};
constexpr std::string_view kPanelStart = "<!--Pages ConLoop-->";
constexpr std::string_view kPanelEnd = "<!--End Pages ConLoop-->";

std::string with_style(std::string_view start, const Value& style) {
  std::string marker(start);
  append_text(marker, style);
  return marker.append("-->");
}

std::string marked(std::string_view start, std::string_view text, std::string_view end) {
  return std::string(start).append(text).append(end);
}

void fill_goods(site::Repeat& goods, Recordset& row) {
  for (const auto& [tag, column] : kGoodsTexts) goods.fill(tag, row, column);
  for (const auto& [tag, column] : kGoodsPrices) {
    if (row.field(column).is_null()) {
      goods.fill(tag, "-");
    } else {
      goods.fill(tag, row, column);
    }
  }
}

// A category's row, read before the next one is moved to.
struct Category {
  std::string child_str;
  Value item_name;
  bool serv_day;
  std::string id;
  Value info;

  explicit Category(Recordset& row)
      : child_str(joined_text(row.field("ChildStr")).string()),
        item_name(row.field("ItemName")),
        serv_day(is_true(row.field("ServDay"))),
        id(joined_text(row.field("id")).string()),
        info(row.field("Info")) {}

 private:
  static bool is_true(const Value& flag) { return !flag.is_null() && to_boolean(flag); }
};

// The work of one call: what the steps share.
class ShopList {
 public:
  ShopList(Connection& db, const ShopListParameters& parameters, const Text& file)
      : db_(db),
        parameters_(parameters),
        serv_day_block_(block(file, "<!--Shop ServDay Style", "<!--End Shop ServDay Style")),
        no_serv_day_block_(
            block(file, "<!--Shop NoServDay Style", "<!--End Shop NoServDay Style")) {}

  void add(const Category& category);
  std::string finished() &&;

 private:
  std::string_view block(const Text& file, std::string_view start, std::string_view end) const {
    return site::cut(file.view(), with_style(start, parameters_.Style),
                     with_style(end, parameters_.Style));
  }
  std::string_view style_block(const Category& category) const {
    return category.serv_day ? serv_day_block_ : no_serv_day_block_;
  }

  void add_tabs(const Category& category);
  void add_own_goods(const Category& category);
  void add_sub_category(const Category& child, std::size_t position, site::Repeat& menu,
                        SettlingText& panels, std::string_view panel_template);
  void list_goods(std::string_view list);

  Connection& db_;
  const ShopListParameters& parameters_;
  std::string_view serv_day_block_;
  std::string_view no_serv_day_block_;
  SettlingText result_{kResultBeginnings, kPanelStart};
  // Of the last goods list.
  std::string loop_template_;
  std::string goods_text_;
};

void ShopList::add(const Category& category) {
  std::string block(style_block(category));
  site::fill(block, "ParentItemName", category.item_name);
  result_.append(block);
  result_.fill("PagesID", std::string("sp").append(category.id));
  if (category.child_str.find(',') != std::string::npos) {
    add_tabs(category);
  } else {
    add_own_goods(category);
  }
  result_.settle();
}

void ShopList::add_tabs(const Category& category) {
  const std::string top(result_.cut("<!--Pages Top-->", "<!--End Pages Top-->"));
  const std::string menu_template(
      site::cut(top, "<!--Pages MenuLoop-->", "<!--End Pages MenuLoop-->"));
  site::Repeat menu(menu_template, kMenuTags);
  // QUIRK: cut from the style block, where {ParentItemName} is still unfilled; a panel that holds
  // that tag is not found in the result and stays as it is.
  std::string panel_template(site::cut(style_block(category), kPanelStart, kPanelEnd));
  site::fill(panel_template, "PagesID", std::string("sp").append(category.id));
  SettlingText panels(kPanelBeginnings);
  panels.append(panel_template);

  const auto children = db_.execute(sub_categories_sql(child_ids(category.child_str, category.id)));
  for (std::size_t k = 0; !children->eof(); ++k, children->move_next()) {
    Value name = children->field("ItemName");
    menu.fill("LitItemName", name);
    menu.fill("MenuId", std::to_string(k));
    menu.fill("MenuStyle", k == 0 ? "h1" : "h2");
    menu.next();
    panels.fill("PtbodyStyle", k == 0 ? "" : "display:none;");
    panels.fill("ShopInfo", children->field("Info"));
    loop_template_ = result_.cut("<!--Loop-->", "<!--End Loop-->");
    list_goods(joined_text(children->field("ChildStr")).view());
    panels.replace(marked("<!--Loop-->", loop_template_, "<!--End Loop-->"), goods_text_);
    panels.settle();
    panels.append(panel_template);
  }
  children->close();

  std::string new_top = top;
  site::replace_all(new_top,
                    marked("<!--Pages MenuLoop-->", menu_template, "<!--End Pages MenuLoop-->"),
                    menu.list());
  result_.replace(marked("<!--Pages Top-->", top, "<!--End Pages Top-->"), new_top);
  result_.replace(marked(kPanelStart, panel_template, kPanelEnd),
                  std::move(panels).replaced_everywhere(panel_template, ""));
}

void ShopList::add_own_goods(const Category& category) {
  result_.fill("ShopInfo", category.info);
  const std::string top(result_.cut("<!--Pages Top-->", "<!--End Pages Top-->"));
  loop_template_ = result_.cut("<!--Loop-->", "<!--End Loop-->");
  list_goods(category.child_str);
  result_.replace(marked("<!--Pages Top-->", top, "<!--End Pages Top-->"), "");
  result_.replace(marked("<!--Loop-->", loop_template_, "<!--End Loop-->"), goods_text_);
}

void ShopList::list_goods(std::string_view list) {
  site::Repeat goods(loop_template_, kGoodsTags);
  const auto rows = db_.open_recordset(goods_sql(parameters_, list), platform::CursorType::Keyset,
                                       platform::LockType::Optimistic);
  // NewsLineNum is looked at where there is a row, because what is no text raises.
  const bool breaks = !rows->eof() && !equals(parameters_.NewsLineNum, "0");
  // The count tells the last row, behind which no row of the layout is broken.
  const std::int64_t count = breaks ? rows->record_count() : 0;
  double in_row = 0;
  for (std::int64_t i = 1; !rows->eof(); ++i, rows->move_next()) {
    if (i < count) {
      in_row += 1;
      if (in_row == to_double(parameters_.NewsLineNum)) {
        goods.append(parameters_.LineCode);
        in_row = 0;
      }
    }
    fill_goods(goods, *rows);
    goods.next();
  }
  rows->close();
  goods_text_ = goods.list();
}

std::string ShopList::finished() && {
  std::string html = std::move(result_).whole();
  site::fill(html, "ListLineHeight", parameters_.ListLineHeight);
  // QUIRK: ConLineHeight itself is never read.
  site::fill(html, "ConLineHeight", parameters_.ListLineHeight);
  // QUIRK: once more for the last goods list, wherever its template was left.
  site::replace_all(html, loop_template_, goods_text_);
  return html;
}

}  // namespace

std::string Show_ShopList(const site::PageContext& page, const ShopListParameters& parameters) {
  const auto db = site::open_database(page);
  const platform::ReadScope one_view(*db);
  const Text file = site::template_text(page, "Shop-List.html");
  ShopList list(*db, parameters, file);
  const Text id = joined_text(page.request().query("Id"));
  const auto rows =
      db->open_recordset(shop_categories_sql(parameters, id.view()), platform::CursorType::Keyset,
                         platform::LockType::Optimistic);
  for (; !rows->eof(); rows->move_next()) list.add(Category(*rows));
  rows->close();
  return std::move(list).finished();
}

platform::SqlText shop_categories_sql(const ShopListParameters& parameters, std::string_view id) {
  platform::SqlText sql("Select ");
  if (id.empty()) {
    // QUIRK: two blanks where there is no bound.
    if (!equals(parameters.ShowItems, "0")) {
      sql.add("Top ").add(joined_text(parameters.ShowItems).view());
    }
    sql.add(
        " [ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where [ShowIndex]=True "
        "And [ParentID]=0 And sysType='RkHost'");
  } else {
    sql.add(
        "[ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where [ParentID]=0 And "
        "sysType='RkHost'");
  }
  if (site::is_master(parameters.Agent_User)) {
    sql.add(" And ([AgentUser]='' Or [AgentUser] Is Null)");
  } else {
    sql.add(" And [AgentUser]='").add(joined_text(parameters.Agent_User).view()).add("'");
  }
  if (!id.empty()) sql.add(" And [Id]=").add_outside(id);
  return sql.add(" Order By [").add(joined_text(parameters.ItemOrders).view()).add("]");
}

std::string sub_categories_sql(std::string_view ids) {
  // QUIRK: no agent's filter and no order, and two blanks before [Id].
  std::string sql =
      "Select [ItemName],[Id],[ChildStr],[Info] From [Rk_ShopItem] Where Depth=1 And  [Id] In(";
  return sql.append(ids).append(")");
}

std::string goods_sql(const ShopListParameters& parameters, std::string_view list) {
  std::string sql = "Select ";
  if (!equals(parameters.ListNum, "0")) {
    sql.append("Top ");
    append_text(sql, parameters.ListNum);
    sql.append(
        " [Id],[ShopName],[Price],[MonPrice],[DanWei],[ItemId],[shInfo],[ThMonPrice],[HfyPrice] "
        "From [Rk_ShopList] Where [ItemId] In (");
  } else {
    // QUIRK: two blanks before Where.
    sql.append(
        "[Id],[ShopName],[Price],[MonPrice],[DanWei],[ItemId],[shInfo],[ThMonPrice],[HfyPrice] "
        "From [Rk_ShopList]  Where [ItemId] In (");
  }
  sql.append(list).append(")");
  if (site::is_master(parameters.Agent_User)) {
    sql.append(" And ([AgentUser]='' Or [AgentUser] Is Null)");
  } else {
    sql.append(" And [AgentUser]='");
    append_text(sql, parameters.Agent_User);
    sql.append("'");
  }
  sql.append(" Order By [");
  append_text(sql, parameters.OrderType);
  return sql.append("] Desc");
}

std::string child_ids(std::string_view child_str, std::string_view id) {
  std::string ids = marked(",", child_str, ",");
  site::replace_all(ids, marked(",", id, ","), ",");
  if (ids.size() < 2) raise(errors::kInvalidCall);
  return ids.substr(1, ids.size() - 2);
}

}  // namespace rk::shop
