#include "site/menu.h"

#include <array>

#include "platform/database.h"
#include "site/linked_text.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "value/conversions.h"
#include "value/text_functions.h"

namespace rk::site {

namespace {

using platform::Recordset;

enum CategoryField : std::size_t { kId, kItemName, kLink };

// The running page, as entries are compared with it.
class CurrentPage {
 public:
  explicit CurrentPage(platform::Request& request)
      : script_(lower_case(joined_text(request.server_variable("SCRIPT_NAME")).view())),
        category_(joined_text(request.query("Id")).string()) {
    const std::size_t first = script_.find('/');
    const std::size_t second = script_.find('/', first == std::string::npos ? first : first + 1);
    in_shop_ = second != std::string::npos &&
               std::string_view(script_).substr(first + 1, second - first - 1) == "shop";
  }

  bool is_at(std::string_view url) const {
    if (lower_case(url) == script_) return true;
    const std::size_t equals = url.find('=');
    if (!in_shop_ || equals == std::string_view::npos) return false;
    url.remove_prefix(equals + 1);
    return url.substr(0, url.find('=')) == category_;
  }

 private:
  const std::string script_;    // in small letters
  const std::string category_;  // the query string's Id
  bool in_shop_ = false;
};

struct Entry {
  std::string_view tag;
  std::string_view url;
};
constexpr std::array kEntries{
    Entry{"NowMunVal_Index", "/index.asp"},     Entry{"NowMunVal_Domain", "/domain/domain.asp"},
    Entry{"NowMunVal_Host", "/host/index.asp"}, Entry{"NowMunVal_DataBase", "/database/index.asp"},
    Entry{"NowMunVal_Mail", "/mail/mail.asp"},
};

// The filled categories: one text in which every fill and link replaces everywhere.
//
// OPTIMIZATION: open_ is looked through for each tag; what can change by links alone is settled_.
class Categories {
 public:
  explicit Categories(std::string_view item) : item_(item) {}

  // A copy of the item for the category of this number.
  void add(std::string_view number) {
    if (!is_shop_number(number)) reopen();
    open_.append(item_);
  }
  void fill(std::string_view tag, const Value& content) {
    if (!site::fill(open_, tag, content)) settled_.clear();
  }
  // QUIRK: the place is looked for in all categories, so "/shop?Id=1" is found in "/shop?Id=12".
  void link(std::string_view number, std::string_view address) {
    const std::string target = std::string(address).append("\" target=\"_blank");
    const bool plain = is_shop_number(number) && target.find('{') == std::string::npos;
    if (!plain || !settled_.link(number, target)) reopen();
    replace_all(open_, std::string(kShopPlace).append(number), target);
  }
  void settle() {
    const std::size_t end = settled_length(open_);
    settled_.append(std::string_view(open_).substr(0, end));
    open_.erase(0, end);
  }
  std::string list() {
    reopen();
    replace_all(open_.append(item_), item_, {});
    return std::move(open_);
  }

 private:
  void reopen() { open_ = settled_.take().append(open_); }

  const std::string_view item_;
  LinkedText settled_;
  std::string open_;
};

void add_category(Categories& categories, Recordset& row, const CurrentPage& current,
                  const Value& back_str) {
  const Value id = row.field(kId);
  const std::string number = joined_text(id).string();
  categories.add(number);
  categories.fill("ItemId", id);
  categories.fill("ItemName", row.field(kItemName));
  const bool here = current.is_at(std::string("/shop/index.asp?id=").append(number));
  categories.fill(std::string(kShopMark).append(number), here ? back_str : Value());
  const Text link = joined_text(row.field(kLink));
  if (!link.empty()) categories.link(number, link.view());
  categories.settle();
}

}  // namespace

Value GetBarClass(const PageContext& page, const Value& barurl, const Value& inputvalue) {
  return CurrentPage(page.request()).is_at(joined_text(barurl).view()) ? inputvalue : Value();
}

std::string Show_Menu(const PageContext& page, const Value& Back_Str, const Value& Agent_User) {
  std::string menu = template_text(page, "Menu.html").string();
  const auto db = open_database(page);
  const CurrentPage current(page.request());
  for (const Entry& entry : kEntries) {
    fill(menu, entry.tag, current.is_at(entry.url) ? Back_Str : Value());
  }
  const std::string item(cut(menu, "<!--ShopItem-->", "<!--End ShopItem-->"));
  Categories categories(item);
  {
    const platform::ReadScope one_view(*db);
    const auto rows = db->execute(menu_categories_sql(joined_text(Agent_User).view()));
    for (; !rows->eof(); rows->move_next()) add_category(categories, *rows, current, Back_Str);
    rows->close();
  }
  db->close();
  replace_all(menu, item, categories.list());
  return menu;
}

std::string menu_categories_sql(std::string_view agent_user) {
  if (agent_user.empty()) {
    return "Select [Id],[ItemName],[Link] From [Rk_ShopItem] Where ([AgentUser]='' Or [AgentUser] "
           "Is Null) And Depth=0 And sysType='RkHost'";
  }
  return std::string("Select [Id],[ItemName],[Link] From [Rk_ShopItem] Where [AgentUser]='")
      .append(agent_user)
      .append("' And Depth=0 And sysType='RkHost'");
}

}  // namespace rk::site
