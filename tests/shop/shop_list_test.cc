#include "shop/shop_list.h"

#include <gtest/gtest.h>

#include <random>

#include "tests/plain/shop_list.h"
#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::shop {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::Rows;
using tests::text;

constexpr char kFront[] =
    "Select  [ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where "
    "[ShowIndex]=True And [ParentID]=0 And sysType='RkHost' And ([AgentUser]='' Or [AgentUser] Is "
    "Null) Order By [Id]";

std::string goods_text(std::string_view list) {
  return "Select [Id],[ShopName],[Price],[MonPrice],[DanWei],[ItemId],[shInfo],[ThMonPrice],"
         "[HfyPrice] From [Rk_ShopList]  Where [ItemId] In (" +
         std::string(list) + ") And ([AgentUser]='' Or [AgentUser] Is Null) Order By [Id] Desc";
}

struct Goods {
  std::string name;
  Value price = number(100);
  Value mon_price = number(10);
  Value unit = text("个");
};

Rows goods(const std::vector<Goods>& list) {
  Rows rows{{"Id", "ShopName", "Price", "MonPrice", "DanWei", "ItemId", "shInfo", "ThMonPrice",
             "HfyPrice"},
            {}};
  int id = 0;
  for (const Goods& one : list) {
    rows.rows.push_back({number(++id), text(one.name), one.price, one.mon_price, one.unit,
                         number(7), text("info"), Value::null(), number(60)});
  }
  return rows;
}

Rows category(std::string_view children, const Value& serv_day = Value::boolean(true)) {
  return {{"ChildStr", "ItemName", "ServDay", "id", "Info"},
          {{text(children), text("Cat"), serv_day, number(5), text("catinfo")}}};
}

class ShopListTest : public testing::Test {
 protected:
  void serv_day(const std::string& block) {
    page.put_template("Shop-List.html", "<!--Shop ServDay Style-->" + block +
                                            "<!--End Shop ServDay Style-->"
                                            "<!--Shop NoServDay Style-->no:" +
                                            block + "<!--End Shop NoServDay Style-->");
  }
  std::string show() { return Show_ShopList(page.context, parameters); }

  FakePage page;
  ShopListParameters parameters{.Style = text(""),
                                .ShowItems = text("0"),
                                .ListNum = text("0"),
                                .NewsLineNum = text("0"),
                                .LineCode = text("|"),
                                .OrderType = text("Id"),
                                .ItemOrders = text("Id"),
                                .ConLineHeight = text("11"),
                                .ListLineHeight = text("22"),
                                .showIndex = text(""),
                                .Agent_User = text("")};
};

// --- texts --------------------------------------------------------------------------------------

TEST_F(ShopListTest, KeepsTheBlanksOfEachText) {
  EXPECT_EQ(shop_categories_sql(parameters, "").text(), kFront);
  EXPECT_EQ(goods_sql(parameters, "7"), goods_text("7"));
  EXPECT_EQ(sub_categories_sql("12,13"),
            "Select [ItemName],[Id],[ChildStr],[Info] From [Rk_ShopItem] Where Depth=1 And  [Id] "
            "In(12,13)");
  parameters.ShowItems = number(3);
  parameters.ListNum = number(4);
  parameters.Agent_User = text("abc");
  EXPECT_EQ(shop_categories_sql(parameters, "").text(),
            "Select Top 3 [ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where "
            "[ShowIndex]=True And [ParentID]=0 And sysType='RkHost' And [AgentUser]='abc' Order By "
            "[Id]");
  EXPECT_EQ(goods_sql(parameters, "7"),
            "Select Top 4 [Id],[ShopName],[Price],[MonPrice],[DanWei],[ItemId],[shInfo],"
            "[ThMonPrice],[HfyPrice] From [Rk_ShopList] Where [ItemId] In (7) And "
            "[AgentUser]='abc' Order By [Id] Desc");
}

TEST_F(ShopListTest, AnIdAsksForOneCategoryWhateverItsShowIndex) {
  const platform::SqlText sql = shop_categories_sql(parameters, "5");
  EXPECT_EQ(sql.text(),
            "Select [ChildStr],[ItemName],[ServDay],[id],[Info] From [Rk_ShopItem] Where "
            "[ParentID]=0 And sysType='RkHost' And ([AgentUser]='' Or [AgentUser] Is Null) And "
            "[Id]=5 Order By [Id]");
  EXPECT_EQ(sql.outside().size(), 1u);
}

TEST_F(ShopListTest, TheCategorysOwnNumberIsTakenOutOfItsList) {
  EXPECT_EQ(child_ids("5,12,13", "5"), "12,13");
  EXPECT_EQ(child_ids("12,5,13", "5"), "12,13");
  EXPECT_EQ(child_ids("15,51", "5"), "15,51");
  EXPECT_EQ(error_of([] { child_ids("5", "5"); }), 5);
}

// --- a category of its own goods ----------------------------------------------------------------

TEST_F(ShopListTest, ACategoryWithoutSubCategoriesHasNoTabHeader) {
  serv_day(
      "{ParentItemName} {PagesID} {ShopInfo}<!--Pages Top-->tabs<!--End Pages Top-->"
      "<!--Pages ConLoop--><!--Loop-->({ShopName})<!--End Loop--><!--End Pages ConLoop-->");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({{"a"}, {"b"}}));
  EXPECT_EQ(show(), "Cat sp5 catinfo<!--Pages ConLoop-->(a)(b)<!--End Pages ConLoop-->");
}

TEST_F(ShopListTest, RowsBreakBehindEachButTheLast) {
  serv_day("<!--Loop-->{ShopName}<!--End Loop-->");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({{"1"}, {"2"}, {"3"}, {"4"}, {"5"}, {"6"}, {"7"}}));
  parameters.NewsLineNum = text("3");
  EXPECT_EQ(show(), "123|456|7");
  page.db.answer(goods_text("7"), goods({{"1"}, {"2"}, {"3"}, {"4"}}));
  parameters.NewsLineNum = text("2");
  EXPECT_EQ(show(), "12|34");
  parameters.NewsLineNum = text("0");
  EXPECT_EQ(show(), "1234");
}

TEST_F(ShopListTest, NewsLineNumIsLookedAtWhereThereAreGoods) {
  serv_day("<!--Loop-->{ShopName}<!--End Loop-->");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({}));
  parameters.NewsLineNum = Value::array(Array::of({}));
  EXPECT_EQ(error_of([&] { show(); }), 0);
  page.db.answer(goods_text("7"), goods({{"a"}}));
  EXPECT_EQ(error_of([&] { show(); }), 13);
}

TEST_F(ShopListTest, ANullPriceShowsADash) {
  serv_day("<!--Loop-->{Price}/{MonPrice}/{ThMonPrice}/{HfyPrice} <!--End Loop-->");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({{.name = "a", .mon_price = Value::null()}}));
  EXPECT_EQ(show(), "100/-/-/60 ");
}

TEST_F(ShopListTest, ANullUnitLosesTheGoodsSoFarAndLaterRowsGoOn) {
  serv_day("[<!--Loop-->{ShopName}{DanWei} <!--End Loop-->]");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({{"a"}, {.name = "b", .unit = Value::null()}, {"c"}}));
  EXPECT_EQ(show(), "[c个 ]");
}

TEST_F(ShopListTest, ANullDescriptionLosesTheGoodsSoFarToo) {
  serv_day("[<!--Loop-->{ShopName}{shInfo} <!--End Loop-->]");
  page.db.answer(kFront, category("7"));
  Rows rows = goods({{"a"}, {"b"}, {"c"}});
  rows.rows[1][6] = Value::null();
  page.db.answer(goods_text("7"), rows);
  EXPECT_EQ(show(), "[cinfo ]");
}

TEST_F(ShopListTest, ZeroAndNegativePricesAreShownAsTheyAre) {
  serv_day("<!--Loop-->{Price}/{MonPrice} <!--End Loop-->");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"),
                 goods({{.name = "a", .price = number(0), .mon_price = number(-3)}}));
  EXPECT_EQ(show(), "0/-3 ");
}

TEST_F(ShopListTest, KeepsPuttingTheLastGoodsWhereTheirTemplateWasLeft) {
  serv_day("<!--Loop-->({ShopName})<!--End Loop-->|({ShopName})");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({{"a"}, {"b"}}));
  EXPECT_EQ(show(), "(a)(b)|(a)(b)");
}

TEST_F(ShopListTest, AFalseOrNullServDayTakesTheOtherBlock) {
  serv_day("{ParentItemName}");
  page.db.answer(goods_text("7"), goods({}));
  page.db.answer(kFront, category("7", Value::boolean(false)));
  EXPECT_EQ(show(), "no:Cat");
  page.db.answer(kFront, category("7", Value::null()));
  EXPECT_EQ(show(), "no:Cat");
}

TEST_F(ShopListTest, KeepsBothLineHeightsFedFromTheList) {
  serv_day("{ListLineHeight} {ConLineHeight}");
  page.db.answer(kFront, category("7"));
  page.db.answer(goods_text("7"), goods({}));
  EXPECT_EQ(show(), "22 22");
}

TEST_F(ShopListTest, NoCategoryIsAnEmptyText) {
  serv_day("x");
  page.db.answer(kFront, {{"ChildStr", "ItemName", "ServDay", "id", "Info"}, {}});
  EXPECT_EQ(show(), "");
}

// --- tabs ---------------------------------------------------------------------------------------

constexpr char kTabs[] =
    "{ParentItemName}<!--Pages Top-->[<!--Pages MenuLoop-->({LitItemName} {MenuId} {MenuStyle})"
    "<!--End Pages MenuLoop-->]<!--End Pages Top--><!--Pages ConLoop-->"
    "<p id={PagesID} style='{PtbodyStyle}'>{ShopInfo}<!--Loop-->{ShopName};<!--End Loop--></p>"
    "<!--End Pages ConLoop-->";

Rows two_children() {
  return {{"ItemName", "Id", "ChildStr", "Info"},
          {{text("One"), number(12), text("12"), text("i1")},
           {text("Two"), number(13), text("13"), text("i2")}}};
}

TEST_F(ShopListTest, TheFirstTabIsMarkedAndItsPanelShown) {
  serv_day(kTabs);
  page.db.answer(kFront, category("5,12,13"));
  page.db.answer(sub_categories_sql("12,13"), two_children());
  page.db.answer(goods_text("12"), goods({{"a"}, {"b"}}));
  page.db.answer(goods_text("13"), goods({{"c"}}));
  EXPECT_EQ(show(),
            "Cat[(One 0 h1)(Two 1 h2)]<p id=sp5 style=''>i1a;b;</p>"
            "<p id=sp5 style='display:none;'>i2c;</p>");
}

TEST_F(ShopListTest, KeepsPanelsThatHoldTheCategorysNameUnexpanded) {
  serv_day(
      "<!--Pages ConLoop-->{ParentItemName}<!--Loop-->{ShopName}<!--End Loop-->"
      "<!--End Pages ConLoop-->");
  page.db.answer(kFront, category("5,12,13"));
  page.db.answer(sub_categories_sql("12,13"), two_children());
  page.db.answer(goods_text("12"), goods({{"a"}}));
  page.db.answer(goods_text("13"), goods({{"c"}}));
  // The last goods list still takes the place of its raw template.
  EXPECT_EQ(show(), "<!--Pages ConLoop-->Cat<!--Loop-->c<!--End Loop--><!--End Pages ConLoop-->");
}

TEST_F(ShopListTest, AListOfTheCategoryAloneWithACommaRaisesOrAsksForNothing) {
  serv_day("<!--Loop-->x<!--End Loop-->");
  page.db.answer(kFront, category(","));
  page.db.fail(sub_categories_sql(","), ScriptError(errors::kSqlSyntax, "Syntax error"));
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
  page.db.answer(kFront, category("5,"));
  page.db.fail(sub_categories_sql(""), ScriptError(errors::kSqlSyntax, "Syntax error"));
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
}

TEST_F(ShopListTest, ANullListIsAnEmptyOne) {
  serv_day("<!--Loop-->x<!--End Loop-->");
  Rows one = category("");
  one.rows[0][0] = Value::null();
  page.db.answer(kFront, one);
  page.db.fail(goods_text(""), ScriptError(errors::kSqlSyntax, "Syntax error"));
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
}

TEST_F(ShopListTest, AnEmptyListReachesTheDatabaseAsItStands) {
  serv_day("<!--Loop-->x<!--End Loop-->");
  page.db.answer(kFront, category(""));
  page.db.fail(goods_text(""), ScriptError(errors::kSqlSyntax, "Syntax error"));
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
}

// --- equal to the plain one ---------------------------------------------------------------------

class RandomShop {
 public:
  explicit RandomShop(unsigned seed) : random_(seed) {}

  std::size_t below(std::size_t limit) { return random_() % limit; }

  std::string block() {
    static constexpr std::string_view kPieces[] = {"<!--Pages Top-->",
                                                   "<!--End Pages Top-->",
                                                   "<!--Pages MenuLoop-->",
                                                   "<!--End Pages MenuLoop-->",
                                                   "<!--Pages ConLoop-->",
                                                   "<!--End Pages ConLoop-->",
                                                   "<!--Loop-->",
                                                   "<!--End Loop-->",
                                                   "{ParentItemName}",
                                                   "{PagesID}",
                                                   "{ShopInfo}",
                                                   "{LitItemName}",
                                                   "{MenuId}",
                                                   "{MenuStyle}",
                                                   "{PtbodyStyle}",
                                                   "{ShopName}",
                                                   "{DanWei}",
                                                   "{Price}",
                                                   "{Id}",
                                                   "{ListLineHeight}",
                                                   "x",
                                                   "y",
                                                   "{",
                                                   "<!--"};
    if (below(3) == 0) return scrambled(kPieces, 12);
    // Mostly well formed, with a piece or two out of place.
    std::string text = scrambled(kPieces, 2);
    text += "<!--Pages Top-->[<!--Pages MenuLoop-->({LitItemName}{MenuId})";
    text += "<!--End Pages MenuLoop-->]<!--End Pages Top-->";
    text += below(4) == 0 ? scrambled(kPieces, 2) : "";
    text += "<!--Pages ConLoop--><p {PtbodyStyle}>";
    text += below(2) == 0 ? "{PagesID}" : "";
    text += below(2) == 0 ? "{ShopInfo}" : "";
    text += "<!--Loop-->" + std::string(below(5) == 0 ? "" : "{ShopName}{DanWei},");
    text += "<!--End Loop--></p><!--End Pages ConLoop-->";
    return text + scrambled(kPieces, 2);
  }

  Value content() {
    static constexpr std::string_view kContents[] = {
        "a",           "b",   "",         "{ShopName}",       "{ShopInfo}",    "{PagesID}",
        "<!--Loop-->", "{",   "PagesID}", "x<!--End Loop-->", "{PtbodyStyle}", "<!--Pages Top-->",
        "{DanWei}",    "<!--"};
    if (below(12) == 0) return Value::null();
    if (below(2) == 0) return Value::text("v" + std::to_string(below(9)));
    return Value::text(kContents[below(std::size(kContents))]);
  }

  Rows goods() {
    Rows rows{{"Id", "ShopName", "Price", "MonPrice", "DanWei", "ItemId", "shInfo", "ThMonPrice",
               "HfyPrice"},
              {}};
    for (std::size_t n = below(4); n > 0; --n) {
      rows.rows.push_back({number(static_cast<int>(n)), content(), content(), content(), content(),
                           number(1), text("i"), content(), content()});
    }
    return rows;
  }

 private:
  template <std::size_t size>
  std::string scrambled(const std::string_view (&pieces)[size], std::size_t most) {
    std::string text;
    for (std::size_t n = below(most + 1); n > 0; --n) text += pieces[below(size)];
    return text;
  }

  std::mt19937 random_;
};

void put_random_shop(FakePage& page, RandomShop& random) {
  page.put_template("Shop-List.html", "<!--Shop ServDay Style-->" + random.block() +
                                          "<!--End Shop ServDay Style-->"
                                          "<!--Shop NoServDay Style-->" +
                                          random.block() + "<!--End Shop NoServDay Style-->");
  Rows categories{{"ChildStr", "ItemName", "ServDay", "id", "Info"}, {}};
  for (int id = 1; id <= static_cast<int>(random.below(5)); ++id) {
    const std::string own = std::to_string(id);
    const std::size_t children = random.below(4);
    std::string list = own;
    Rows rows{{"ItemName", "Id", "ChildStr", "Info"}, {}};
    for (std::size_t c = 1; c <= children; ++c) {
      const std::string child = own + std::to_string(c);
      list += "," + child;
      rows.rows.push_back({random.content(), text(child), text(child), random.content()});
      page.db.answer(goods_text(child), random.goods());
    }
    page.db.answer(goods_text(own), random.goods());
    if (children > 0) page.db.answer(sub_categories_sql(child_ids(list, own)), rows);
    categories.rows.push_back({text(list), random.content(),
                               random.below(3) == 0 ? Value::null() : Value::boolean(true),
                               number(id), random.content()});
  }
  page.db.answer(kFront, categories);
}

TEST_F(ShopListTest, EqualsThePlainListOnGeneratedShops) {
  for (unsigned seed = 0; seed < 6000; ++seed) {
    RandomShop random(seed);
    FakePage shop;
    put_random_shop(shop, random);
    parameters.NewsLineNum = number(static_cast<int>(random.below(3)));
    parameters.LineCode = random.content();
    const std::string shipped = Show_ShopList(shop.context, parameters);
    ASSERT_EQ(shipped, plain::shop_list(shop.context, parameters)) << "seed " << seed;
  }
}

}  // namespace
}  // namespace rk::shop
