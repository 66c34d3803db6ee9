#include "catalogue/domain_lists.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::real;
using tests::text;

constexpr char kClear[] =
    "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";

TEST(DomainPriceListSql, GoesByTheLanguage) {
  EXPECT_EQ(domain_price_list_sql("EN", false),
            "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=0 "
            "Order By IdKey Desc");
  EXPECT_EQ(domain_price_list_sql("EN", true),
            "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=0 "
            "And [AgentS]=1 Order By IdKey Desc");
  EXPECT_EQ(domain_price_list_sql("CN", false),
            "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=1 "
            "Order By IdKey Desc");
  EXPECT_EQ(domain_price_list_sql("CN", true),
            "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [cnDomain]=1 "
            "And [AgentS]=1 Order By IdKey Desc");
  EXPECT_EQ(domain_price_list_sql("", true),
            "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Where [AgentS]=1 "
            "Order By IdKey Desc");
}

TEST(DomainPriceListSql, OtherLetterCaseListsAllSuffixes) {
  const char all[] =
      "Select [Domain],[Money],[UpdateMoney],[Id] From [Rk_DomainList] Order By IdKey Desc";
  EXPECT_EQ(domain_price_list_sql("en", false), all);
  EXPECT_EQ(domain_price_list_sql("CH", false), all);
  EXPECT_EQ(domain_price_list_sql("", false), all);
}

TEST(DomainPriceListSql, OwnPrices) {
  EXPECT_EQ(own_domain_price_sql("green", "4"),
            "Select [Price],[UpdatePrice],[Id] From [Rk_AgentPriceSet] Where [PriceType]='Domain' "
            "And [AgentUser]='green' And MastId=4");
}

class DomainPriceList : public testing::Test {
 protected:
  void suffixes(const std::string& sql, std::vector<std::vector<Value>> rows) {
    page.db.answer(sql, {{"Domain", "Money", "UpdateMoney", "Id"}, std::move(rows)});
  }
  std::string show(const std::string& item, const char* agent = "") {
    page.put_template("Domain-PriceList.html", "<!--PriceList Style1-->[<!--Loop-->" + item +
                                                   "<!--End Loop-->]<!--End PriceList Style1-->");
    std::string html =
        Show_DomainPriceList(page.context, text("1"), text("EN"), text(agent)).string();
    for (const std::string marker : {"<!--Loop-->", "<!--End Loop-->"}) {
      if (const auto at = html.find(marker); at != std::string::npos) html.erase(at, marker.size());
    }
    return html;
  }

  FakePage page;
};

TEST_F(DomainPriceList, KeepsFillingBothSpellingsOfTheId) {
  suffixes(domain_price_list_sql("EN", false), {{text(".com"), number(60), real(65.5), number(3)}});
  EXPECT_EQ(show("{Domain} {id} {Id} {Price} {UpdatePrice} {ID};"), "[.com 3 3 60 65.5 {ID};]");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  "execute " + domain_price_list_sql("EN", false),
                                                  "close recordset", "close"}));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(DomainPriceList, NoRowsLeaveTheLoopEmpty) {
  suffixes(domain_price_list_sql("EN", false), {});
  EXPECT_EQ(show("{Domain}"), "[]");
}

TEST_F(DomainPriceList, AgentWithoutAPriceRowSeesTheMastersPrices) {
  suffixes(domain_price_list_sql("EN", true), {{text(".com"), number(60), number(65), number(3)},
                                               {text(".net"), number(70), number(75), number(4)}});
  page.db.answer(own_domain_price_sql("green", "3"),
                 {{"Price", "UpdatePrice", "Id"}, {{number(1), number(2), number(9)}}});
  page.db.answer(own_domain_price_sql("green", "4"), {{"Price", "UpdatePrice", "Id"}, {}});
  EXPECT_EQ(show("{Domain} {Id} {Price} {UpdatePrice};", "green"), "[.com 3 1 2;.net 4 70 75;]");
}

// --- the search form's boxes --------------------------------------------------------------------

class DomainBoxes : public testing::Test {
 protected:
  std::string sql() const { return domain_boxes_sql(parameters); }
  std::string show() { return Show_sDomainList(page.context, parameters); }

  FakePage page;
  DomainBoxParameters parameters{.TopNum = number(0),
                                 .InputWidth = number(80),
                                 .InputHeight = text("20"),
                                 .DomainType = Value(),
                                 .OrderType = text("IdKey"),
                                 .Agent_User = Value()};
};

TEST_F(DomainBoxes, KeepsTwoBlanksWithoutABound) {
  EXPECT_EQ(sql(), "Select  [Type],[DefaultCheck] From [Rk_DomainList] Order By [IdKey] Desc");
  parameters.TopNum = text("5");
  EXPECT_EQ(sql(), "Select Top 5 [Type],[DefaultCheck] From [Rk_DomainList] Order By [IdKey] Desc");
}

TEST_F(DomainBoxes, KeepsTheChineseGroupUnderItsOwnSpelling) {
  parameters.DomainType = text("EN");
  EXPECT_EQ(sql(),
            "Select  [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=0 Order By "
            "[IdKey] Desc");
  parameters.DomainType = text("CH");
  EXPECT_EQ(sql(),
            "Select  [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=1 Order By "
            "[IdKey] Desc");
  parameters.DomainType = text("CN");
  EXPECT_EQ(sql(), "Select  [Type],[DefaultCheck] From [Rk_DomainList] Order By [IdKey] Desc");
}

TEST_F(DomainBoxes, AgentsSeeWhatTheyMaySell) {
  parameters.Agent_User = text("green");
  EXPECT_EQ(sql(),
            "Select  [Type],[DefaultCheck] From [Rk_DomainList] Where [AgentS]=1 Order By [IdKey] "
            "Desc");
  parameters.DomainType = text("EN");
  EXPECT_EQ(sql(),
            "Select  [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=0 And [AgentS]=1 "
            "Order By [IdKey] Desc");
  parameters.DomainType = text("CH");
  EXPECT_EQ(sql(),
            "Select  [Type],[DefaultCheck] From [Rk_DomainList] where [cndomain]=1 And [AgentS]=1 "
            "Order By [IdKey] Desc");
}

TEST_F(DomainBoxes, TopNumMustBeASixteenBitNumber) {
  parameters.TopNum = text("many");
  EXPECT_EQ(error_of([&] { show(); }), 13);
  parameters.TopNum = number(40000);
  EXPECT_EQ(error_of([&] { show(); }), 6);
  parameters.TopNum = Value::null();
  EXPECT_EQ(error_of([&] { show(); }), 94);
  parameters.TopNum = Value();
  EXPECT_EQ(sql(), "Select  [Type],[DefaultCheck] From [Rk_DomainList] Order By [IdKey] Desc");
}

TEST_F(DomainBoxes, TopNumIsReadBeforeTheAgent) {
  parameters.TopNum = Value::null();
  parameters.Agent_User = Value::array(Array::of({number(1)}));
  EXPECT_EQ(error_of([&] { show(); }), 94);
}

TEST_F(DomainBoxes, ShowOneForEachSuffix) {
  page.db.answer(sql(), {{"Type", "DefaultCheck"},
                         {{text(".com.cn"), Value::boolean(true)},
                          {text(".net"), Value::boolean(false)},
                          {text(".org"), Value::null()}}});
  EXPECT_EQ(show(),
            std::string("<div style=\"width:80px;height:20px;float:left;\"><input type=checkbox "
                        "checked value=\"yes\" name=\"comcn\">.com.cn</div>"
                        "<div style=\"width:80px;height:20px;float:left;\"><input type=checkbox "
                        " value=\"yes\" name=\"net\">.net</div>"
                        "<div style=\"width:80px;height:20px;float:left;\"><input type=checkbox "
                        " value=\"yes\" name=\"org\">.org</div>") +
                kClear);
  EXPECT_EQ(page.db.log(),
            (std::vector<std::string>{"open Data Source=shop.db", "recordset 1 3 " + sql(),
                                      "close recordset", "close"}));
}

TEST_F(DomainBoxes, ATwoLabelSuffixNamesItsBoxWithoutDotsAndIsShownWithThem) {
  page.db.answer(sql(), {{"Type", "DefaultCheck"}, {{text(".com.cn"), Value::boolean(false)}}});
  EXPECT_NE(show().find(" name=\"comcn\">.com.cn</div>"), std::string::npos);
}

TEST_F(DomainBoxes, NoRowsLeaveTheClearingElement) {
  page.db.answer(sql(), {{"Type", "DefaultCheck"}, {}});
  EXPECT_EQ(show(), kClear);
}

TEST_F(DomainBoxes, NullSuffixRaises) {
  page.db.answer(sql(), {{"Type", "DefaultCheck"}, {{Value::null(), Value::boolean(true)}}});
  EXPECT_EQ(error_of([&] { show(); }), 94);
}

}  // namespace
}  // namespace rk::catalogue
