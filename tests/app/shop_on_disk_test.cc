// Shop, payment, news and success cases over a real database: whose rows their statements find
// there, and what bad input comes to.
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "shop/news.h"
#include "shop/payment.h"
#include "shop/shop_item_page.h"
#include "shop/shop_list.h"
#include "shop/success.h"
#include "tests/app/storefront_on_disk.h"
#include "value/conversions.h"

namespace rk::shop {
namespace {

using tests::error_of;
using tests::number;
using tests::text;

constexpr std::int32_t kSyntax = -2147217900;
constexpr std::int32_t kNoValue = -2147217904;
constexpr std::int32_t kNoTable = -2147217865;

class ShopOnDisk : public tests::StorefrontOnDisk {
 protected:
  ShopOnDisk() {
    put_template("Shop-List.html", block("ServDay") + block("NoServDay"));
    put_template("Shop-ShowShop-Info.html", "{ShopName} {Price}|{ShopPrice}");
    put_template("User-Service-PayType.html", "<!--Loop-->{Paytype};<!--End Loop-->");
    put_template("User-Success-Info.html",
                 "<!--Style--><!--Loop-->{SiteName};<!--End Loop-->{PageSelect}<!--End Style-->");
    run("Insert Into Rk_ShopItem (Id, ItemName, ParentID, Depth, ChildStr, ServDay, Info, "
        "ShowIndex, sysType, AgentUser) Values "
        "(1,'one',0,0,'1',1,'i',1,'RkHost',Null),(2,'two',0,0,'2,21,22',0,'i',1,'RkHost',''),"
        "(21,'first',2,1,'21',0,'i',0,'RkHost','abc'),(22,'second',2,1,'22',0,'i',0,'RkHost',Null),"
        "(3,'hidden',0,0,'3',0,'i',0,'RkHost',Null),(4,'other line',0,0,'4',0,'i',1,'Mail',Null),"
        "(5,'own',0,0,'5',Null,'i',1,'RkHost','abc');"
        "Insert Into Rk_ShopList (Id, ShopName, ItemId, Price, DanWei, shInfo, AgentUser) Values "
        "(1,'a',1,50,'u','s',Null),(2,'b',21,60,'u','s',''),(3,'c',22,70,'u','s',Null),"
        "(4,'d',1,80,'u','s','abc'),(5,'e',5,90,'u','s','abc'),(6,'f',3,10,'u','s',Null),"
        "(7,'lost',99,10,'u','s',Null)");
  }
  static std::string block(const std::string& kind) {
    return "<!--Shop " + kind +
           " Style-->[{ParentItemName}<!--Pages Top-->:<!--Pages MenuLoop-->{LitItemName} "
           "<!--End Pages MenuLoop--><!--End Pages Top--> <!--Pages "
           "ConLoop--><!--Loop-->{ShopName},"
           "<!--End Loop--><!--End Pages ConLoop-->]<!--End Shop " +
           kind + " Style-->";
  }
  std::string shop(std::string_view agent = "") {
    parameters.Agent_User = Value::text(agent);
    std::string html = Show_ShopList(context, parameters);
    for (const std::string_view marker : {"<!--Pages ConLoop-->", "<!--End Pages ConLoop-->"}) {
      for (std::size_t at = html.find(marker); at != std::string::npos; at = html.find(marker)) {
        html.erase(at, marker.size());
      }
    }
    return html;
  }
  std::string news(std::string_view agent) {
    const NewsListParameters list{text("news"), number(9), text(""),          number(99),
                                  text("1"),    text("0"), Value::text(agent)};
    return titles(Show_NewsList(context, list));
  }
  std::string news_page(std::string_view agent) {
    return titles(Show_NewsPageList(context, clock_, Value::text(agent)));
  }
  // The texts of links to items.
  static std::string titles(const std::string& html) {
    std::string found;
    for (std::size_t at = html.find(".asp?id="); at != std::string::npos;
         at = html.find(".asp?id=", at + 1)) {
      const std::size_t begin = html.find('>', at) + 1;
      found += html.substr(begin, html.find('<', begin) - begin) + " ";
    }
    return found;
  }

  ShopListParameters parameters{.Style = text(""),
                                .ShowItems = text("0"),
                                .ListNum = text("0"),
                                .NewsLineNum = text("0"),
                                .LineCode = text("|"),
                                .OrderType = text("Id"),
                                .ItemOrders = text("Id"),
                                .ConLineHeight = text("1"),
                                .ListLineHeight = text("2"),
                                .showIndex = text(""),
                                .Agent_User = text("")};

 private:
  tests::FixedClock clock_;
};

// --- the shop -----------------------------------------------------------------------------------

TEST_F(ShopOnDisk, TheMasterShowsItsRowsAndSubCategoriesOfAnybody) {
  EXPECT_EQ(shop(), "[one a,][two:first second  b,c,]");
}

TEST_F(ShopOnDisk, AnAgentShowsItsOwnRowsAlone) {
  EXPECT_EQ(shop("abc"), "[own e,]");
  EXPECT_EQ(shop("nobody"), "");
}

TEST_F(ShopOnDisk, ShowItemsBoundsTheFrontViewOnly) {
  parameters.ShowItems = number(1);
  EXPECT_EQ(shop(), "[one a,]");
  ask("id", "2");
  EXPECT_EQ(shop(), "[two:first second  b,c,]");
}

TEST_F(ShopOnDisk, AnIdShowsThatCategoryThoughTheFrontViewDoesNot) {
  ask("id", "3");
  EXPECT_EQ(shop(), "[hidden f,]");
  for (const char* other : {"4", "21", "5", "77"}) {
    ask("id", other);
    EXPECT_EQ(shop(), "") << other;
  }
}

TEST_F(ShopOnDisk, AnIdThatIsNoNumberRaises) {
  for (const char* bad : {"1 or 1=1", "1;2", "(1)", "1,2", "'1'"}) {
    ask("id", bad);
    EXPECT_EQ(error_of([&] { shop(); }), kSyntax) << bad;
  }
  ask("id", "abc");
  EXPECT_EQ(error_of([&] { shop(); }), kNoValue);
}

TEST_F(ShopOnDisk, AnEmptyOrBrokenListOfChildrenRaises) {
  for (const char* list : {"''", "Null", "'1,'", "'1,,2'", "'1,(2'", "'1,x'"}) {
    run(std::string("Update Rk_ShopItem Set ChildStr=") + list + " Where Id=1");
    EXPECT_NE(error_of([&] { shop(); }), 0) << list;
  }
}

TEST_F(ShopOnDisk, AColumnThatIsNotThereRaises) {
  parameters.OrderType = text("nix");
  EXPECT_EQ(error_of([&] { shop(); }), kNoValue);
  parameters.OrderType = text("Id");
  parameters.ItemOrders = text("nix");
  EXPECT_EQ(error_of([&] { shop(); }), kNoValue);
}

TEST_F(ShopOnDisk, AnArticleOfAnotherAgentIsShownAsWell) {
  run("Update Rk_ShopList Set Info='i',PicUrl='p' Where Id=5");
  ask("id", "5");
  EXPECT_EQ(Show_ShopInfo(context).as_view(), "e 90/u|90");
}

TEST_F(ShopOnDisk, AnArticleWithoutDescriptionLosesItsPage) {
  ask("id", "5");
  EXPECT_EQ(Show_ShopInfo(context).as_view(), "");
}

TEST_F(ShopOnDisk, AnArticleThatIsNotThereOrHasNoCategoryIsEmpty) {
  for (const char* id : {"", "x", "77", "7", "1e400", "1 or 1=1", "-1", "1.5"}) {
    ask("id", id);
    EXPECT_TRUE(Show_ShopInfo(context).is_empty()) << id;
  }
}

// --- payment ------------------------------------------------------------------------------------

TEST_F(ShopOnDisk, MethodsOfTheMasterAndOfAnAgentAreApart) {
  run("Insert Into Pay (PayType, PayIco, PayInfo, AgentUser) Values ('a','','',Null),"
      "('b','','',''),('c','','','abc')");
  EXPECT_EQ(Show_PayType(context, text("")).view(), "<!--Loop-->a;b;<!--End Loop-->");
  EXPECT_EQ(Show_PayType(context, text("abc")).view(), "<!--Loop-->c;<!--End Loop-->");
  run("Update Pay Set PayInfo=Null Where PayType='c'");
  EXPECT_EQ(error_of([&] { Show_PayType(context, text("abc")); }), 94);
}

TEST_F(ShopOnDisk, AMissingTableRaises) {
  run("Drop Table Pay");
  EXPECT_EQ(error_of([&] { Show_PayType(context, text("")); }), kNoTable);
}

// --- news ---------------------------------------------------------------------------------------

TEST_F(ShopOnDisk, AnAgentsListsHoldWhatIsForEveryone) {
  run("Insert Into Rk_News (Type, Title, AgentUser, EveryOne) Values ('news','master',Null,0),"
      "('news','for all',Null,1),('news','own','abc',0),('news','of another','xyz',0),"
      "('news','of another for all','xyz',1)");
  EXPECT_EQ(news("abc"), "of another for all own for all ");
  EXPECT_EQ(news_page("abc"), news("abc"));
  EXPECT_EQ(news(""), "for all master ");
  EXPECT_EQ(news_page(""), news(""));
}

TEST_F(ShopOnDisk, ATypeOfNewsStaysInsideItsText) {
  run("Insert Into Rk_News (Type, Title, AgentUser) Values ('news','a',Null)");
  ask("type", "x' Or 'a'='a");
  EXPECT_EQ(news_page(""), "");  // without its quotes and blanks it is a kind that none has
  ask("type", "news");
  EXPECT_EQ(news_page(""), "a ");
}

// --- success cases ------------------------------------------------------------------------------

TEST_F(ShopOnDisk, ATypeOfCasesIsFoundWithinAndMayNotCloseItsText) {
  run("Insert Into Rk_Success (SiteName, succlass, SiteUrl, Info, PicUrl) Values "
      "('a','shops|firms','','',''),('b','firms','','',''),('c','','','','')");
  const SuccessPageParameters cases{text(""),  number(9),  text("0"),
                                    text("|"), text("Id"), text("")};
  const auto shown = [&] {
    const std::string html = Show_SuccessPageList(context, cases).string();
    return html.substr(0, html.find("<!--End Loop-->"));
  };
  ask("type", "firms");
  EXPECT_EQ(shown(), "<!--Loop-->b;a;");
  ask("type", "shops");
  EXPECT_EQ(shown(), "<!--Loop-->a;");
  ask("type", "none");
  EXPECT_EQ(shown(), "<!--Loop-->");
  ask("type", "x' Or '1'='1");
  EXPECT_EQ(error_of([&] { shown(); }), kSyntax);
}

TEST_F(ShopOnDisk, WithoutItsRowASiteHasNoCategories) {
  EXPECT_EQ(error_of([&] { Show_SuccessItem(context, number(1), number(1), text("abc")); }), 3021);
}

}  // namespace
}  // namespace rk::shop
