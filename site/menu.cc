#include "site/menu.h"

#include <algorithm>
#include <array>
#include <optional>

#include "platform/database.h"
#include "site/menu_categories.h"
#include "site/storefront.h"
#include "site/tags.h"
#include "site/template_cache.h"
#include "site/trapped.h"
#include "value/conversions.h"
#include "value/text_functions.h"

namespace rk::site {

namespace {

using platform::Recordset;

enum CategoryField : std::size_t { kId, kItemName, kLink };

constexpr std::string_view kCategoryPage = "/shop/index.asp?id=";

// The running page, as entries are compared with it.
class CurrentPage {
 public:
  explicit CurrentPage(platform::Request& request)
      : script_(lower_case(joined_text(request.server_variable("SCRIPT_NAME")).view())),
        id_(joined_text(request.query("Id")).string()) {
    const std::size_t first = script_.find('/');
    const std::size_t second = script_.find('/', first == std::string::npos ? first : first + 1);
    in_shop_ = second != std::string::npos &&
               std::string_view(script_).substr(first + 1, second - first - 1) == "shop";
  }

  bool is_at(std::string_view url) const {
    if (lower_case(url) == script_) return true;
    const std::size_t equals = url.find('=');
    return equals != std::string_view::npos && names_id(url.substr(equals + 1));
  }
  // The same for an address in small letters without a "=".
  bool is_at_entry(std::string_view url) const { return url == script_; }
  // The same for kCategoryPage with a number behind it.
  bool is_at_category(std::string_view number) const {
    if (names_id(number)) return true;
    return script_.starts_with(kCategoryPage) &&
           script_.substr(kCategoryPage.size()) == lower_case(number);
  }

 private:
  // Whether the query names what stands behind an address's "=".
  bool names_id(std::string_view id) const { return in_shop_ && id.substr(0, id.find('=')) == id_; }

  const std::string script_;  // in small letters
  const std::string id_;      // the query string's Id
  bool in_shop_ = false;
};

struct Entry {
  std::string_view tag;
  std::string_view url;
};
constexpr std::array kEntries{
    Entry{"{NowMunVal_Index}", "/index.asp"},
    Entry{"{NowMunVal_Domain}", "/domain/domain.asp"},
    Entry{"{NowMunVal_Host}", "/host/index.asp"},
    Entry{"{NowMunVal_DataBase}", "/database/index.asp"},
    Entry{"{NowMunVal_Mail}", "/mail/mail.asp"},
};

// Nothing where it has no text.
std::optional<std::string> text_if_any(const Value& value) {
  std::optional<Text> text;
  trapped([&] { text = try_text(value); });
  if (!text) return std::nullopt;
  return text->string();
}

std::optional<std::string> text_if_any(Recordset& rows, std::size_t ordinal) {
  std::string text;
  if (!rows.append_field_text(ordinal, text)) return std::nullopt;
  return text;
}

// The entry whose tag begins a text, or none.
const Entry* entry_at(std::string_view text) {
  const auto found = std::find_if(kEntries.begin(), kEntries.end(),
                                  [&](const Entry& entry) { return text.starts_with(entry.tag); });
  return found == kEntries.end() ? nullptr : &*found;
}

// OPTIMIZATION: the menu with its entries filled in one walk; nothing where the mark holds a brace
// or an open "{" stands before a tag, so that a fill could make a tag that is filled after it.
std::optional<std::string> entries_in_one_walk(std::string_view menu, const CurrentPage& current,
                                               std::string_view mark) {
  if (mark.find_first_of("{}") != std::string_view::npos) return std::nullopt;
  std::string filled;
  filled.reserve(menu.size());
  std::size_t from = 0;
  std::size_t other_brace = 0;  // the last that begins no entry's tag
  for (std::size_t at = menu.find('{'); at != std::string_view::npos; at = menu.find('{', at + 1)) {
    const Entry* entry = entry_at(menu.substr(at));
    if (entry == nullptr) {
      other_brace = at;
      continue;
    }
    const std::string_view between = menu.substr(other_brace, at - other_brace);
    if (between.starts_with('{') && between.find('}') == std::string_view::npos) return {};
    filled.append(menu, from, at - from);
    if (current.is_at_entry(entry->url)) filled.append(mark);
    from = at + entry->tag.size();
  }
  return std::move(filled.append(menu, from));
}

std::string fixed_entries(const Text& menu, const CurrentPage& current, const Value& back_str) {
  const std::optional<std::string> mark = text_if_any(back_str);
  auto filled = mark ? entries_in_one_walk(menu.view(), current, *mark) : std::nullopt;
  if (filled) return std::move(*filled);
  std::string text = menu.string();
  for (const Entry& entry : kEntries) {
    const bool here = current.is_at_entry(entry.url);
    fill(text, entry.tag.substr(1, entry.tag.size() - 2), here ? back_str : Value());
  }
  return text;
}

std::string categories(std::string_view item, Recordset& rows, const CurrentPage& current,
                       const Value& back_str) {
  MenuCategories all(item);
  const std::optional<std::string> mark = text_if_any(back_str);
  for (; !rows.eof(); rows.move_next()) {
    MenuCategory category;
    category.id = text_if_any(rows, kId);
    category.name = text_if_any(rows, kItemName);
    category.link = text_if_any(rows, kLink).value_or(std::string());
    const bool here = current.is_at_category(category.id.value_or(std::string()));
    category.mark = here ? mark : std::string();
    all.add(category);
  }
  return all.list();
}

}  // namespace

Value GetBarClass(const PageContext& page, const Value& barurl, const Value& inputvalue) {
  return CurrentPage(page.request()).is_at(joined_text(barurl).view()) ? inputvalue : Value();
}

std::string Show_Menu(const PageContext& page, const Value& Back_Str, const Value& Agent_User) {
  const auto db = open_database(page);
  const CurrentPage current(page.request());
  std::string menu;
  std::string item;
  std::string list;
  {
    // Begun before the folder is looked for, so that the menu is of one state of the database.
    const platform::ReadScope one_view(*db);
    menu = fixed_entries(template_text(page, "Menu.html"), current, Back_Str);
    item = cut(menu, "<!--ShopItem-->", "<!--End ShopItem-->");
    const auto rows = db->execute(menu_categories_sql(joined_text(Agent_User).view()));
    list = categories(item, *rows, current, Back_Str);
    rows->close();
  }
  db->close();
  replace_all(menu, item, list);
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
