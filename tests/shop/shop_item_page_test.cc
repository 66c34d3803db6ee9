#include "shop/shop_item_page.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::shop {
namespace {

using tests::FakePage;
using tests::number;
using tests::real;
using tests::text;

struct Article {
  Value price = number(100);
  Value half_year = Value::null();
  Value quarter = Value::null();
  Value month = number(10);
  Value unit = text("个");
};

class ShopItemPage : public testing::Test {
 protected:
  void put(const std::string& file, const Article& article, const Value& serv_day) {
    page.put_template("Shop-ShowShop-Info.html", file);
    page.request.queries["id"] = "3";
    page.db.answer(
        "Select * From Rk_ShopList Where Id=3",
        {{"Id", "ItemId", "ShopName", "Price", "HfyPrice", "ThMonPrice", "MonPrice", "DanWei",
          "Info", "PicUrl", "AgentUser"},
         {{number(3), number(7), text("SSL"), article.price, article.half_year, article.quarter,
           article.month, article.unit, text("info"), text("p.gif"), text("other")}}});
    page.db.answer("Select * From Rk_ShopItem Where Id=7",
                   {{"Id", "ServDay"}, {{number(7), serv_day}}});
  }
  std::string show() {
    const Value html = Show_ShopInfo(page.context);
    return html.is_empty() ? "(empty)" : std::string(html.as_view());
  }

  FakePage page;
};

TEST_F(ShopItemPage, AnIdThatIsNoNumberGivesEmptyWithoutAQuery) {
  for (const char* id : {"", "abc", "'", "1e400", "1;2", "1 or 1=1"}) {
    FakePage visited;
    visited.request.queries["id"] = id;
    EXPECT_TRUE(Show_ShopInfo(visited.context).is_empty());
    EXPECT_TRUE(visited.statements().empty());
  }
}

TEST_F(ShopItemPage, AMissingArticleOrCategoryGivesEmpty) {
  put("x", {}, Value::boolean(true));
  page.db.answer("Select * From Rk_ShopItem Where Id=7", {{"Id", "ServDay"}, {}});
  EXPECT_EQ(show(), "(empty)");
  page.db.answer("Select * From Rk_ShopList Where Id=3", {{"Id", "ItemId"}, {}});
  EXPECT_EQ(show(), "(empty)");
}

TEST_F(ShopItemPage, TheIdStaysOutsideOfTheText) {
  put("x", {}, Value::boolean(true));
  page.request.queries["id"] = " 3 ";
  show();
  EXPECT_EQ(page.statements().at(0), "Select * From Rk_ShopList Where Id=3");
}

TEST_F(ShopItemPage, KeepsThreeOrdersOfThePeriods) {
  put("{Price}|{ShopPrice}|{SelectDate}",
      {.half_year = number(60), .quarter = real(27.5), .month = number(10)}, Value::boolean(true));
  const std::string summary = " 100元/年 60元/半年 27.5元/季 10元/月";
  std::string form =
      "<script language=\"javascript\">\r\nfunction showmoney()\r\n{\r\n"
      "   if(myfrm.BuyType.value==\"年\")\r\n   {\r\n"
      "       wmoney.innerHTML=myfrm.BuyYear.value*100*myfrm.BuyNo.value;\r\n   }\r\n"
      "   if(myfrm.BuyType.value==\"季\")\r\n   {\r\n"
      "       wmoney.innerHTML=myfrm.BuyYear.value*27.5*myfrm.BuyNo.value;\r\n   }\r\n"
      "   if(myfrm.BuyType.value==\"半年\")\r\n   {\r\n"
      "       wmoney.innerHTML=myfrm.BuyYear.value*60*myfrm.BuyNo.value;\r\n   }\r\n"
      "   if(myfrm.BuyType.value==\"月\")\r\n   {\r\n"
      "       wmoney.innerHTML=myfrm.BuyYear.value*10*myfrm.BuyNo.value;\r\n   }\r\n"
      "}\r\n</script>\r\n   <br>\r\n   <br>\r\n"
      "   购买年限：<select size=\"1\" name=\"BuyYear\" onchange=\"showmoney();\">\r\n";
  for (int i = 1; i <= 11; ++i) {
    const std::string n = std::to_string(i);
    form += "   <option value=" + n + ">" + n + "</option>\r\n";
  }
  form +=
      "   </select> <select size=\"1\" name=\"BuyType\" onchange=\"showmoney();\">\r\n"
      "   <option value=\"年\">年</option>\r\n   <option value=\"月\">月</option>\r\n"
      "   <option value=\"季\">季</option>\r\n   <option value=\"半年\">半年</option>\r\n"
      "   </select>\r\n";
  EXPECT_EQ(show(), summary + "|" + summary + "|" + form);
}

TEST_F(ShopItemPage, OnlyAYearlyPriceHasOneOptionAndThreeBlocksTimesZero) {
  put("{Price}|{ShopPrice}|{SelectDate}", {.price = number(120), .month = number(0)},
      Value::boolean(true));
  const std::string html = show();
  EXPECT_TRUE(html.starts_with(" 120元/年| 120元/年|"));
  EXPECT_NE(html.find("<option value=\"年\">"), std::string::npos);
  EXPECT_EQ(html.find("<option value=\"月\">"), std::string::npos);
  std::size_t zeros = 0;
  for (std::size_t at = html.find("*0*"); at != std::string::npos; at = html.find("*0*", at + 1)) {
    ++zeros;
  }
  EXPECT_EQ(zeros, 3u);
}

TEST_F(ShopItemPage, AnOrdinaryArticleShowsPriceAndUnitAndMultipliesIt) {
  put("{ShopName} {Price} {ShopPrice} {SelectDate}{Info} {Image} {Id}", {.price = number(50)},
      Value::boolean(false));
  EXPECT_EQ(show(),
            "SSL 50/个 50 <script language=\"javascript\">\r\nfunction showmoney()\r\n{\r\n"
            "       wmoney.innerHTML=50*myfrm.BuyNo.value;\r\n}\r\n</script>  \r\ninfo p.gif 3");
}

TEST_F(ShopItemPage, NegativePricesCountAsGivenAndNullAsZero) {
  put("{Price}|{SelectDate}", {.price = number(-5), .month = Value::null()}, Value::boolean(true));
  const std::string html = show();
  EXPECT_TRUE(html.starts_with(" -5元/年|")) << html;
  EXPECT_NE(html.find("value*-5*myfrm"), std::string::npos);
  EXPECT_EQ(html.find("<option value=\"月\">"), std::string::npos);
}

TEST_F(ShopItemPage, WithoutAnyPriceThereIsNothingToChoose) {
  put("[{Price}][{ShopPrice}]{SelectDate}", {.price = Value::null(), .month = number(0)},
      Value::boolean(true));
  const std::string html = show();
  EXPECT_TRUE(html.starts_with("[][]")) << html;
  EXPECT_NE(html.find("onchange=\"showmoney();\">\r\n   </select>"), std::string::npos);
}

TEST_F(ShopItemPage, ANullServDayIsAnOrdinaryArticle) {
  put("{Price}", {.price = number(50), .unit = Value::null()}, Value::null());
  EXPECT_EQ(show(), "50/");
}

TEST_F(ShopItemPage, ANullPriceOfAnOrdinaryArticleLosesThePage) {
  put("{Price} x", {.price = Value::null()}, Value::boolean(false));
  EXPECT_EQ(show(), "");
}

}  // namespace
}  // namespace rk::shop
