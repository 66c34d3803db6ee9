#include "site/money_log.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/support/fake_page.h"
#include "tests/support/fixed_clock.h"

namespace rk::site {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::real;
using tests::text;

class MoneyLog : public testing::Test {
 protected:
  MoneyLog() {
    page.writes = {"Select * From MoneyLog"};
    page.db.answer("Select * From MoneyLog",
                   {{"Id", "user", "type", "money", "buymoney", "logmoney", "info", "now"}, {}});
  }
  void write(const Value& money) {
    WriteMoneyLog(page.context, clock,
                  {text("ann"), text("buy"), money, number(3), Value::null(), text("it's")});
  }

  FakePage page;
  tests::FixedClock clock{45000.5 + 0.7 / 86400};
};

TEST_F(MoneyLog, StoresItsFieldsInTheirOrder) {
  write(real(-9.5));
  EXPECT_EQ(
      page.db.log(),
      (std::vector<std::string>{
          "open Data Source=shop.db", "recordset 1 3 Select * From MoneyLog", "add_new",
          "set user=ann", "set type=buy", "set money=-9.5", "set buymoney=3", "set logmoney=Null",
          "set info=it's", "set now=2023-03-15 12:00:00", "update", "close recordset", "close"}));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(MoneyLog, ANegativeAmountIsStoredAsGiven) {
  write(number(-3));
  EXPECT_EQ(page.db.log()[5], "set money=-3");
}

TEST_F(MoneyLog, RaisesWhatTheDatabaseRaisesAndStoresNothing) {
  page.db.answer("Select * From MoneyLog", {{"user"}, {}});
  EXPECT_EQ(error_of([&] { write(number(1)); }), 3265);
  EXPECT_EQ(page.db.log().back(), "close");
  EXPECT_EQ(std::count(page.db.log().begin(), page.db.log().end(), "update"), 0);
}

}  // namespace
}  // namespace rk::site
