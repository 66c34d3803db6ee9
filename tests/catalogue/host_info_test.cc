#include "catalogue/host_info.h"

#include <gtest/gtest.h>

#include "catalogue/host_list.h"
#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::real;
using tests::Rows;
using tests::text;

// A plan's row by the names of its columns; the defaults lead to no other table but the pool's.
struct Plan {
  Value name = text("Plan");
  Value price = number(100);
  Value mon_price = number(10);
  Value info = text("info");
  Value max_connections = number(50);
  Value max_bandwidth = number(64);
  Value free_mail = number(0);
  Value free_ms_sql = number(0);
  Value free_my_sql = number(0);
  Value can_update = Value::boolean(true);
  Value space = text("1G");

  Rows rows() const {
    return {{"Id", "HostName", "HostSpace", "Price", "MonPrice", "HostNo", "HostInfo",
             "MaxConnections", "Scriptmaps", "MaxBandwidth", "vPathNo", "AppModeName", "freeMail",
             "freeMsSql", "freeMySql", "canupdate", "TestDay", "AgentS"},
            {{number(5), name, space, price, mon_price, text("No5"), info, max_connections,
              text("asp"), max_bandwidth, number(2), text("pool"), free_mail, free_ms_sql,
              free_my_sql, can_update, number(7), number(1)}}};
  }
};

class HostInfo : public testing::Test {
 protected:
  HostInfo() {
    page.request.queries["id"] = "5";
    page.db.answer("Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName='pool'",
                   {{"CPULimit"}, {{number(30)}}});
    page.db.answer("Select [MailName] From [Rk_MailList] Where Id=3",
                   {{"MailName"}, {{text("Mail")}}});
    page.db.answer("Select [DbName] From [Rk_SqlList] Where Id=4", {{"DbName"}, {{text("Sql")}}});
    page.db.answer("Select [DbName] From [Rk_mySqlList] Where Id=6", {{"DbName"}, {{text("My")}}});
  }
  void plan(const Plan& plan) {
    page.db.answer("Select * From [Rk_HostList] Where [ID]=5", plan.rows());
    page.db.answer("Select * From [Rk_HostList] Where [ID]=5 And [AgentS]=1", plan.rows());
  }
  void own_offer(std::vector<std::vector<Value>> rows) {
    page.db.answer(host_price_sql("green", "5"), {{"AgentSetName", "Price", "MonPrice"}, rows});
  }
  // The tags of the file, filled.
  std::string show(std::string file, const char* agent = "") {
    page.application.values.erase("rk_tp_/template/blue/host-showhost-info.html");
    page.put_template("Host-ShowHost-Info.html", std::move(file));
    return joined_text(Show_HostInfo(page.context, text(agent))).string();
  }

  FakePage page;
};

TEST_F(HostInfo, FillsTheWholeFile) {
  plan({});
  EXPECT_EQ(show("{HostName} {HostSpace} {HostPrice}{id} {HostNo} {HostInfo} {MaxConnections} "
                 "{Scriptmaps} {MaxBandwidth} {vPathNo} {CPU} {FreeMail} {FreeDB} {Update} "
                 "{TestDay}"),
            "Plan 1G 100元/年 10元/月5 No5 info 50 个 asp 64 KB/S 2 30% 无 无 支持 7");
}

TEST_F(HostInfo, AsksItsTablesInTheirOrder) {
  plan({.free_mail = number(3), .free_ms_sql = number(4), .free_my_sql = number(6)});
  own_offer({{text("Own"), number(1), number(2)}});
  show("x", "green");
  EXPECT_EQ(page.log(),
            (std::vector<std::string>{
                "open Data Source=shop.db",
                "execute Select * From [Rk_HostList] Where [ID]=5 And [AgentS]=1",
                "execute Select [AgentSetName],[Price],[MonPrice] From [Rk_AgentPriceSet] Where "
                "[AgentUser]='green' And [MastId]=5 And [PriceType]='Host'",
                "close recordset",
                "execute Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName='pool'",
                "close recordset",
                "execute Select [MailName] From [Rk_MailList] Where Id=3",
                "close recordset",
                "execute Select [DbName] From [Rk_SqlList] Where Id=4",
                "close recordset",
                "execute Select [DbName] From [Rk_mySqlList] Where Id=6",
                "close recordset",
                "close recordset",
                "close",
            }));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(HostInfo, IdThatIsNoNumberShowsNothingAndAsksNothing) {
  for (const char* id : {"abc", "", "5x", "1,x"}) {
    page.db.clear_log();
    page.request.queries["id"] = id;
    EXPECT_TRUE(Show_HostInfo(page.context, Value()).is_empty()) << id;
    EXPECT_TRUE(page.statements().empty()) << id;
    EXPECT_EQ(page.db.log().back(), "close");
  }
  page.request.queries.erase("id");
  EXPECT_TRUE(Show_HostInfo(page.context, Value()).is_empty());
}

TEST_F(HostInfo, PlanThatIsNotThereShowsNothing) {
  page.db.answer("Select * From [Rk_HostList] Where [ID]=5", {{"Id"}, {}});
  EXPECT_TRUE(Show_HostInfo(page.context, Value()).is_empty());
  page.db.answer("Select * From [Rk_HostList] Where [ID]=5 And [AgentS]=1", {{"Id"}, {}});
  EXPECT_TRUE(Show_HostInfo(page.context, text("green")).is_empty());
  EXPECT_EQ(page.db.log().back(), "close");
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(HostInfo, IdIsCleanedAndMarkedAsOutside) {
  page.request.queries["id"] = " 5' ";
  plan({});
  EXPECT_EQ(show("{id}"), "5");
  page.request.queries["id"] = "(7)";
  EXPECT_EQ(error_of([&] { show("{id}"); }), errors::kSqlSyntax);
  EXPECT_EQ(page.db.marked().back(), "Select * From [Rk_HostList] Where [ID]=<<(7)>>");
}

TEST_F(HostInfo, NoMonthlyPriceShowsTheYearlyOneAlone) {
  plan({.mon_price = number(0)});
  EXPECT_EQ(show("[{HostPrice}]"), "[100元/年 ]");
  plan({.mon_price = Value::null()});
  EXPECT_EQ(show("[{HostPrice}]"), "[100元/年 ]");
}

TEST_F(HostInfo, AgentsOwnNameAndPrices) {
  plan({});
  own_offer({{text("Own"), real(1.5), number(2)}});
  EXPECT_EQ(show("{HostName} {HostPrice}", "green"), "Own 1.5元/年 2元/月");
  own_offer({});
  EXPECT_EQ(show("{HostName} {HostPrice}", "green"), "Plan 100元/年 10元/月");
}

TEST_F(HostInfo, KeepsTestingTheMastersMonthlyPriceForAgents) {
  plan({.mon_price = number(0)});
  own_offer({{text("Own"), number(1), number(2)}});
  EXPECT_EQ(show("[{HostPrice}]", "green"), "[1元/年 ]");
  plan({.mon_price = number(10)});
  own_offer({{text("Own"), number(1), number(0)}});
  EXPECT_EQ(show("[{HostPrice}]", "green"), "[1元/年 0元/月]");
}

TEST_F(HostInfo, UnlimitedIsSaidInWords) {
  plan({.max_connections = number(9999), .max_bandwidth = text("9999")});
  EXPECT_EQ(show("{MaxConnections} {MaxBandwidth}"), "无限制 无限制");
  plan({.max_connections = Value::null()});
  EXPECT_EQ(show("[{MaxConnections}]"), "[ 个]");
}

TEST_F(HostInfo, FreeDatabases) {
  plan({.free_my_sql = number(6)});
  EXPECT_EQ(show("{FreeDB}"), "My");
  plan({.free_ms_sql = number(4)});
  EXPECT_EQ(show("{FreeDB}"), "Sql");
  plan({.free_ms_sql = number(4), .free_my_sql = number(6)});
  EXPECT_EQ(show("{FreeDB}"), "Sql/My");
  plan({.free_ms_sql = Value::null(), .free_my_sql = Value::null()});
  EXPECT_EQ(show("{FreeDB}"), "无");
}

TEST_F(HostInfo, FreeMailLinksToItsPage) {
  plan({.free_mail = number(3)});
  EXPECT_EQ(show("{FreeMail}"), "<a href='/mail/mail.asp?id=3'>Mail</a>");
}

TEST_F(HostInfo, CarriageReturnsBecomeBreaksAndLineFeedsStay) {
  plan({.info = text("one\r\ntwo\rthree\nfour")});
  EXPECT_EQ(show("{HostInfo}"), "one<br>\ntwo<br>three\nfour");
}

TEST_F(HostInfo, UpdateGoesByTrue) {
  plan({.can_update = Value::boolean(false)});
  EXPECT_EQ(show("{Update}"), "不支持");
  plan({.can_update = Value::null()});
  EXPECT_EQ(show("{Update}"), "不支持");
}

TEST_F(HostInfo, RowsThatThePlanNamesMustBeThere) {
  plan({.free_mail = number(3)});
  page.db.answer("Select [MailName] From [Rk_MailList] Where Id=3", {{"MailName"}, {}});
  EXPECT_EQ(error_of([&] { show("x"); }), 3021);
  plan({.free_ms_sql = number(4)});
  page.db.answer("Select [DbName] From [Rk_SqlList] Where Id=4", {{"DbName"}, {}});
  EXPECT_EQ(error_of([&] { show("x"); }), 3021);
  plan({.free_my_sql = number(6)});
  page.db.answer("Select [DbName] From [Rk_mySqlList] Where Id=6", {{"DbName"}, {}});
  EXPECT_EQ(error_of([&] { show("x"); }), 3021);
  plan({});
  page.db.answer("Select CPULimit From Rk_AppPoolMode Where AppPoolMoldName='pool'",
                 {{"CPULimit"}, {}});
  EXPECT_EQ(error_of([&] { show("x"); }), 3021);
  EXPECT_EQ(page.db.log().back(), "close");
}

TEST_F(HostInfo, KeepsLosingTheWholeTextOnANull) {
  plan({.space = Value::null()});
  EXPECT_EQ(show("{HostSpace} and more"), "");
  plan({.name = Value::null()});
  EXPECT_EQ(show("{HostName} and more"), "");
}

TEST_F(HostInfo, NullInfoRaises) {
  plan({.info = Value::null()});
  EXPECT_EQ(error_of([&] { show("x"); }), 94);
}

TEST_F(HostInfo, MissingTemplateShowsAnEmptyText) {
  plan({});
  const Value html = Show_HostInfo(page.context, Value());
  EXPECT_TRUE(html.is_text());
  EXPECT_EQ(html.as_view(), "");
}

}  // namespace
}  // namespace rk::catalogue
