#include "site/menu.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/plain/menu.h"
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
  std::string show(const std::string& file, const std::string& mark = " now") {
    page.application.values.erase("rk_tp_/template/blue/menu.html");
    page.put_template("Menu.html", file);
    return Show_Menu(page.context, text(mark), Value());
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
  const std::vector<std::string> log = page.db.log();
  EXPECT_EQ(std::vector<std::string>(log.end() - 3, log.end()),
            (std::vector<std::string>{std::string("execute ") + kCategories, "close recordset",
                                      "close"}));
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

TEST_F(Menu, AMissingTableRaises) {
  page.db.fail(kCategories, ScriptError(errors::kSqlMissingTable, "no table"));
  EXPECT_EQ(tests::error_of([&] { show("x"); }), errors::kSqlMissingTable);
  EXPECT_EQ(page.db.log().back(), "close");
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(Menu, NamesStandUnescaped) {
  categories({{number(4), text("<b>A & \"B\"</b>"), text("/x?a=1&b='2'")}});
  EXPECT_EQ(shop(), "<a href=\"/x?a=1&b='2'\" target=\"_blank\"><b>A & \"B\"</b></a>");
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

// Parts of items, names, links and marks that come near to what is looked for.
class Pieces {
 public:
  explicit Pieces(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t end) { return random_() % end; }
  std::string joined(std::size_t most) {
    static const char* const kPieces[] = {"{ItemId}",
                                          "{ItemName}",
                                          "{NowMunVal_Shop_{ItemId}}",
                                          "{NowMunVal_Shop_2}",
                                          "{NowMunVal_Shop_",
                                          "/shop?Id=",
                                          "/shop?Id={ItemId}",
                                          "{",
                                          "}",
                                          "{Item",
                                          "Id}",
                                          "<b>",
                                          "1",
                                          "2",
                                          "-",
                                          "/sh",
                                          "op?Id="};
    std::string made;
    for (std::size_t n = below(most + 1); n > 0; --n) made += kPieces[below(std::size(kPieces))];
    return made;
  }
  Value id() {
    if (below(20) == 0) return below(2) == 0 ? text("x") : Value::null();
    return number(static_cast<int>(below(14)) - 1);
  }
  std::vector<plain::MenuCategory> rows() {
    std::vector<plain::MenuCategory> made;
    for (std::size_t n = below(7); n > 0; --n) {
      const Value name = below(20) == 0 ? Value::null() : text(joined(2));
      made.push_back({id(), name, text(joined(1))});
    }
    return made;
  }

 private:
  std::mt19937 random_;
};

TEST_F(Menu, EqualsThePlainVersionOnGeneratedCategories) {
  Pieces pieces(7);
  visit("/shop/index.asp", "2");
  for (int i = 0; i < 20000; ++i) {
    const std::string item = pieces.joined(6);
    const std::string mark = pieces.joined(1);
    const std::vector<plain::MenuCategory> rows = pieces.rows();
    categories(rows);
    const std::string file = "[" + item + "]<!--ShopItem-->" + item + "<!--End ShopItem-->";
    ASSERT_EQ(show(file, mark),
              plain::replaced(file, item, plain::menu_categories(item, rows, "2", mark)))
        << "item " << item << " round " << i;
  }
}

TEST_F(Menu, FillsTheFixedEntriesAsThePlainVersionOnGeneratedFiles) {
  std::mt19937 random(9);
  static const char* const kParts[] = {"{NowMunVal_Index}",
                                       "{NowMunVal_Mail}",
                                       "{NowMunVal_Host}",
                                       "{NowMunVal_",
                                       "{",
                                       "}",
                                       "Mail}",
                                       "Host",
                                       "Val_",
                                       "<a>"};
  const auto parts = [&](std::size_t most) {
    std::string made;
    for (std::size_t n = random() % (most + 1); n > 0; --n) {
      made += kParts[random() % std::size(kParts)];
    }
    return made;
  };
  visit("/index.asp");
  for (int i = 0; i < 20000; ++i) {
    const std::string file = "<" + parts(8);
    const std::string mark = parts(2);
    ASSERT_EQ(show(file, mark), plain::menu_entries(file, "Index", mark)) << file << " " << mark;
  }
}

// In the form that templates have, where a link may name another category's place.
TEST_F(Menu, EqualsThePlainVersionWhereEveryCategoryHasALink) {
  std::mt19937 random(8);
  for (int i = 0; i < 200; ++i) {
    std::vector<plain::MenuCategory> rows;
    for (std::size_t n = random() % 60; n > 0; --n) {
      const int id = static_cast<int>(random() % 1200);
      const std::string link = random() % 3 == 0 ? "" : "/shop?Id=" + std::to_string(random() % 99);
      rows.push_back({number(id), text("name"), text(link)});
    }
    categories(rows);
    ASSERT_EQ(shop(), plain::menu_categories(kItem, rows, "", "")) << "round " << i;
  }
}

}  // namespace
}  // namespace rk::site
