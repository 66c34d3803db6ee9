#include "site/menu.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/plain/repeat.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::site {
namespace {

using tests::FakePage;
using tests::number;
using tests::text;

constexpr char kCategories[] =
    "Select [Id],[ItemName],[Link] From [Rk_ShopItem] Where ([AgentUser]='' Or [AgentUser] Is "
    "Null) And Depth=0 And sysType='RkHost'";
constexpr char kItem[] = "<a{NowMunVal_Shop_{ItemId}} href=\"/shop?Id={ItemId}\">{ItemName}</a>";

class Menu : public testing::Test {
 protected:
  Menu() { categories({}); }
  void categories(std::vector<std::vector<Value>> rows) {
    page.db.answer(kCategories, {{"Id", "ItemName", "Link"}, std::move(rows)});
  }
  std::string show(const std::string& file) {
    page.application.values.erase("rk_tp_/template/blue/menu.html");
    page.put_template("Menu.html", file);
    return Show_Menu(page.context, text(" now"), Value());
  }
  // The categories alone.
  std::string shop(const std::string& item = kItem) {
    const std::string html = show("<!--ShopItem-->" + item + "<!--End ShopItem-->");
    return plain::cut(html, "<!--ShopItem-->", "<!--End ShopItem-->");
  }
  void visit(const std::string& script, const std::string& id = "") {
    page.request.server_variables["script_name"] = script;
    page.request.queries["id"] = id;
  }

  FakePage page;
};

TEST_F(Menu, MarksTheFixedEntryOfTheRunningPage) {
  const std::string file =
      "{NowMunVal_Index}|{NowMunVal_Domain}|{NowMunVal_Host}|{NowMunVal_DataBase}|{NowMunVal_Mail}";
  visit("/index.asp");
  EXPECT_EQ(show(file), " now||||");
  visit("/Host/Index.asp");
  EXPECT_EQ(show(file), "|| now||");
  visit("/other.asp");
  EXPECT_EQ(show(file), "||||");
}

TEST_F(Menu, AsksForTheSitesCategories) {
  visit("/index.asp");
  show("x");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  std::string("execute ") + kCategories,
                                                  "close recordset", "close"}));
  EXPECT_EQ(page.db.reading(), 0);
  EXPECT_EQ(menu_categories_sql("green"),
            "Select [Id],[ItemName],[Link] From [Rk_ShopItem] Where [AgentUser]='green' And "
            "Depth=0 And sysType='RkHost'");
}

TEST_F(Menu, MarksTheCategoryThatTheRequestNames) {
  categories({{number(4), text("A"), text("")}, {number(5), text("B"), Value::null()}});
  visit("/shop/index.asp", "5");
  EXPECT_EQ(shop(), "<a href=\"/shop?Id=4\">A</a><a now href=\"/shop?Id=5\">B</a>");
  visit("/shop/index.asp", "05");
  EXPECT_EQ(shop(), "<a href=\"/shop?Id=4\">A</a><a href=\"/shop?Id=5\">B</a>");
  visit("/SHOP/list.asp", "4");
  EXPECT_EQ(shop(), "<a now href=\"/shop?Id=4\">A</a><a href=\"/shop?Id=5\">B</a>");
  visit("/index.asp", "5");
  EXPECT_EQ(shop(), "<a href=\"/shop?Id=4\">A</a><a href=\"/shop?Id=5\">B</a>");
}

TEST_F(Menu, LinkOfACategoryOpensInANewWindow) {
  categories({{number(4), text("A"), text("http://a.example")}});
  EXPECT_EQ(shop(), "<a href=\"http://a.example\" target=\"_blank\">A</a>");
}

TEST_F(Menu, KeepsReplacingLinksInLongerNumbers) {
  categories({{number(12), text("A"), text("")}, {number(1), text("B"), text("/b")}});
  EXPECT_EQ(shop(),
            "<a href=\"/b\" target=\"_blank2\">A</a><a href=\"/b\" target=\"_blank\">B</a>");
}

TEST_F(Menu, NoCategoriesLeaveTheMarkers) {
  EXPECT_EQ(show(std::string("[<!--ShopItem-->") + kItem + "<!--End ShopItem-->]"),
            "[<!--ShopItem--><!--End ShopItem-->]");
}

TEST_F(Menu, EmptyItemLeavesTheTextUnchanged) {
  categories({{number(4), text("A"), text("")}});
  EXPECT_EQ(show("[<!--ShopItem--><!--End ShopItem-->]"), "[<!--ShopItem--><!--End ShopItem-->]");
}

TEST_F(Menu, KeepsLosingTheCategoriesUpToANullName) {
  categories({{number(1), text("A"), text("")},
              {number(2), Value::null(), text("")},
              {number(3), text("C"), text("")}});
  EXPECT_EQ(shop("{ItemName};"), "C;");
}

TEST_F(Menu, MissingFileIsAnEmptyMenu) {
  EXPECT_EQ(Show_Menu(page.context, Value(), Value()), "");
}

TEST_F(Menu, BarClassAnswersWhatItWasGiven) {
  visit("/shop/index.asp", "5");
  const auto answers = [&](const char* url) {
    return GetBarClass(page.context, text(url), number(7)).kind() == Value::Kind::Long;
  };
  EXPECT_TRUE(answers("/SHOP/Index.asp"));
  EXPECT_TRUE(answers("/x?y=5"));
  EXPECT_TRUE(answers("/x?y=5=6"));
  EXPECT_FALSE(answers("/x?y=6"));
  EXPECT_FALSE(answers("/x"));
  EXPECT_TRUE(GetBarClass(page.context, text("/x"), number(7)).is_empty());
}

// --- equal to one accumulated text --------------------------------------------------------------

using Category = std::vector<Value>;

std::string plain_list(const std::string& item, const std::vector<Category>& rows) {
  std::string items;
  const auto fill = [&](const std::string& tag, const Value& content) {
    if (content.is_null()) {
      items.clear();
    } else {
      items = plain::replaced(items, std::string("{").append(tag).append("}"),
                              joined_text(content).view());
    }
  };
  for (const Category& row : rows) {
    items += item;
    const std::string id = joined_text(row[0]).string();
    fill("ItemId", row[0]);
    fill("ItemName", row[1]);
    fill(std::string("NowMunVal_Shop_").append(id), Value());
    const std::string link = joined_text(row[2]).string();
    if (!link.empty()) {
      items =
          plain::replaced(items, std::string("/shop?Id=").append(id), link + "\" target=\"_blank");
    }
  }
  return plain::replaced(items + item, item, "");
}

TEST_F(Menu, EqualsThePlainVersionOnGeneratedCategories) {
  std::mt19937 random(7);
  static const char* const kPieces[] = {"{ItemId}",
                                        "{ItemName}",
                                        "{NowMunVal_Shop_{ItemId}}",
                                        "{NowMunVal_Shop_2}",
                                        "/shop?Id=",
                                        "/shop?Id={ItemId}",
                                        "{",
                                        "}",
                                        "{Item",
                                        "Id}",
                                        "<b>",
                                        "1",
                                        "/sh",
                                        "op?Id="};
  const auto pieces = [&](std::size_t most) {
    std::string made;
    for (std::size_t n = random() % (most + 1); n > 0; --n) {
      made += kPieces[random() % std::size(kPieces)];
    }
    return made;
  };
  for (int i = 0; i < 3000; ++i) {
    const std::string item = pieces(6);
    std::vector<Category> rows;
    for (std::size_t n = random() % 6; n > 0; --n) {
      const Value name = random() % 20 == 0 ? Value::null() : text(pieces(2));
      rows.push_back({number(static_cast<int>(random() % 14)), name, text(pieces(1))});
    }
    categories(rows);
    const std::string file = "[" + item + "]<!--ShopItem-->" + item + "<!--End ShopItem-->";
    ASSERT_EQ(show(file), plain::replaced(file, item, plain_list(item, rows)))
        << "item " << item << " round " << i;
  }
}

}  // namespace
}  // namespace rk::site
