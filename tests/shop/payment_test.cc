#include "shop/payment.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "tests/support/fixed_clock.h"

namespace rk::shop {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::Rows;
using tests::text;

constexpr char kMasterTypes[] = "Select * From [Pay] Where AgentUser Is Null Or AgentUser=''";
constexpr char kMasterChoices[] = "Select * From [Pay] Where [AgentUser] Is Null Or AgentUser=''";

Rows methods(const std::vector<Value>& infos) {
  Rows rows{{"Id", "Paytype", "PayIco", "PayInfo", "AgentUser"}, {}};
  int id = 0;
  for (const Value& info : infos) {
    ++id;
    rows.rows.push_back(
        {number(id), text("m" + std::to_string(id)), text("i.gif"), info, Value::null()});
  }
  return rows;
}

class Payment : public testing::Test {
 protected:
  Payment() {
    page.put_template("User-Service-PayType.html",
                      "[<!--Loop-->{Paytype} {PayIco} {PayInfo};<!--End Loop-->]");
    page.put_template("User-Service-EnterPay.html",
                      "{UserName} {Date} <!--Loop-->({Id} {PayType})<!--End Loop-->");
  }
  std::string types(std::string_view agent = "") {
    return Show_PayType(page.context, Value::text(agent)).string();
  }
  std::string choices(std::string_view agent = "") {
    return Show_EnterPay(page.context, clock, Value::text(agent)).string();
  }

  FakePage page;
  tests::FixedClock clock{45000.75};
};

TEST_F(Payment, KeepsTheBracketsOfEachText) {
  EXPECT_EQ(pay_type_sql(text("")), kMasterTypes);
  EXPECT_EQ(pay_type_sql(text("abc")), "Select * From [Pay] Where AgentUser='abc'");
  EXPECT_EQ(enter_pay_sql(text("")), kMasterChoices);
  EXPECT_EQ(enter_pay_sql(text("abc")), "Select * From [Pay] Where [AgentUser]='abc' ");
}

TEST_F(Payment, MethodsStandBetweenTheMarkers) {
  page.db.answer(kMasterTypes, methods({text("one"), text("two")}));
  EXPECT_EQ(types(), "[<!--Loop-->m1 i.gif one;m2 i.gif two;<!--End Loop-->]");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  std::string("recordset 1 1 ") + kMasterTypes,
                                                  "close recordset", "close"}));
}

TEST_F(Payment, KeepsLineFeedsBehindTheBreaksOfInstructions) {
  page.db.answer(kMasterTypes, methods({text("a b\r\nc d")}));
  EXPECT_EQ(types(), "[<!--Loop-->m1 i.gif a&nbsp;b<br>\nc&nbsp;d;<!--End Loop-->]");
}

TEST_F(Payment, BlanksOfInstructionsDoNotBreakAndALineFeedAloneIsNone) {
  page.db.answer(kMasterTypes, methods({text("a  b\nc\rd")}));
  EXPECT_EQ(types(), "[<!--Loop-->m1 i.gif a&nbsp;&nbsp;b\nc<br>d;<!--End Loop-->]");
}

TEST_F(Payment, EmptyInstructionsAreAnEmptyText) {
  page.db.answer(kMasterTypes, methods({text("")}));
  EXPECT_EQ(types(), "[<!--Loop-->m1 i.gif ;<!--End Loop-->]");
}

TEST_F(Payment, NullInstructionsRaiseInvalidUseOfNull) {
  page.db.answer(kMasterTypes, methods({Value::null()}));
  EXPECT_EQ(error_of([&] { types(); }), 94);
}

TEST_F(Payment, WithoutMethodsTheRestOfThePageIsReturned) {
  page.db.answer(kMasterTypes, methods({}));
  page.db.answer(kMasterChoices, methods({}));
  EXPECT_EQ(types(), "[<!--Loop--><!--End Loop-->]");
  EXPECT_EQ(choices(), " 2023-03-15 <!--Loop--><!--End Loop-->");
}

TEST_F(Payment, ChoicesCarryTheVisitorsNameAndTheDay) {
  page.session.values["username"] = text("li");
  page.db.answer(kMasterChoices, methods({text(""), text("")}));
  EXPECT_EQ(choices(), "li 2023-03-15 <!--Loop-->(1 m1)(2 m2)<!--End Loop-->");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  std::string("execute ") + kMasterChoices,
                                                  "close recordset", "close"}));
}

TEST_F(Payment, AnAgentsMethodsAreAskedForByItsName) {
  page.db.answer("Select * From [Pay] Where AgentUser='abc'", methods({text("own")}));
  EXPECT_EQ(types("abc"), "[<!--Loop-->m1 i.gif own;<!--End Loop-->]");
}

TEST_F(Payment, AMissingTemplateIsAnEmptyPage) {
  FakePage bare;
  bare.db.answer(kMasterTypes, methods({text("a")}));
  EXPECT_EQ(Show_PayType(bare.context, text("")).view(), "");
}

}  // namespace
}  // namespace rk::shop
