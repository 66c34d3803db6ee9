#include "catalogue/selectors.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::text;

constexpr char kSelect[] =
    "<select size=\"1\" name=\"D1\" onchange=location.href=this.value style=\"padding-left: 4px; "
    "padding-right: 4px; padding-top: 1px; padding-bottom: 1px\">\r\n"
    "  <option>产品服务快速通道</option>\r\n"
    "  <option value=\"/Host\">＝＝虚拟主机＝＝</option>\r\n";
constexpr char kDataBases[] = "  <option value=\"/DataBase.Index.asp\">＝＝数据库＝＝</option>\r\n";
constexpr char kMails[] = "  <option value=\"/Mail/Mail.asp\">＝＝企业邮局＝＝</option>\r\n";

class ProductList : public testing::Test {
 protected:
  using Products = std::vector<std::vector<Value>>;
  void products(const std::string& table, const std::string& name, const std::string& where,
                Products rows) {
    page.db.answer("Select [ID],[" + name + "] From [" + table + "]" + where,
                   {{"ID", name}, std::move(rows)});
  }
  void own_name(const std::string& id, const std::string& type, Products rows) {
    page.db.answer(
        "Select [AgentSetName] From [Rk_AgentPriceSet] Where [AgentUser]='green' And "
        "[MastId]=" +
            id + " And [PriceType]='" + type + "'",
        {{"AgentSetName"}, std::move(rows)});
  }
  FakePage page;
};

TEST_F(ProductList, EmptyCatalogueHasItsFourFixedOptions) {
  products("Rk_HostList", "HostName", "", {});
  products("Rk_SqlList", "DbName", " Where [freeSql]=0", {});
  products("Rk_MySqlList", "DbName", " Where [freeSql]=0", {});
  products("Rk_MailList", "MailName", " Where [freeMail]=0", {});
  EXPECT_EQ(ShowPro_List(page.context, Value()),
            std::string(kSelect) + kDataBases + kMails + "</select>");
  EXPECT_EQ(page.db.log(),
            (std::vector<std::string>{
                "open Data Source=shop.db",
                "execute Select [ID],[HostName] From [Rk_HostList]",
                "close recordset",
                "execute Select [ID],[DbName] From [Rk_SqlList] Where [freeSql]=0",
                "close recordset",
                "execute Select [ID],[DbName] From [Rk_MySqlList] Where [freeSql]=0",
                "close recordset",
                "execute Select [ID],[MailName] From [Rk_MailList] Where [freeMail]=0",
                "close recordset",
                "close",
            }));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(ProductList, OptionsLeadToTheProductsPages) {
  products("Rk_HostList", "HostName", "", {{number(4), text("Host")}});
  products("Rk_SqlList", "DbName", " Where [freeSql]=0", {{number(5), text("Sql")}});
  products("Rk_MySqlList", "DbName", " Where [freeSql]=0", {{number(6), text("My")}});
  products("Rk_MailList", "MailName", " Where [freeMail]=0", {{number(7), Value::null()}});
  EXPECT_EQ(ShowPro_List(page.context, Value()),
            std::string(kSelect) +
                "  <option value=\"/Host/ShowHost.asp?id=4\">┠Host</option>\r\n" + kDataBases +
                "  <option value=\"/DataBase/Index.asp\">Sql</option>\r\n"
                "  <option value=\"/DataBase/Index.asp\">My</option>\r\n" +
                kMails + "  <option value=\"/Mail/Mail.asp?id=7\">┠</option>\r\n</select>");
}

TEST_F(ProductList, AgentsSeeTheirOwnNamesWhereTheyHaveThem) {
  products("Rk_HostList", "HostName", " Where [AgentS]=1",
           {{number(4), text("Host")}, {number(8), text("Master")}});
  products("Rk_SqlList", "DbName", " Where [freeSql]=0 And [AgentS]=1", {{number(5), text("Sql")}});
  products("Rk_MySqlList", "DbName", " Where [freeSql]=0 And [AgentS]=1",
           {{number(6), text("My")}});
  products("Rk_MailList", "MailName", " Where [freeMail]=0 And AgentS=1",
           {{number(7), text("Mail")}});
  own_name("4", "Host", {{text("OwnHost")}});
  own_name("8", "Host", {});
  own_name("5", "Sql", {{text("OwnSql")}});
  own_name("6", "MySql", {{text("OwnMy")}});
  own_name("7", "Mail", {{text("OwnMail")}});
  EXPECT_EQ(ShowPro_List(page.context, text("green")),
            std::string(kSelect) +
                "  <option value=\"/Host/ShowHost.asp?id=4\">┠OwnHost</option>\r\n"
                "  <option value=\"/Host/ShowHost.asp?id=8\">┠Master</option>\r\n" +
                kDataBases +
                "  <option value=\"/DataBase/Index.asp\">OwnSql</option>\r\n"
                "  <option value=\"/DataBase/Index.asp\">OwnMy</option>\r\n" +
                kMails + "  <option value=\"/Mail/Mail.asp?id=7\">┠OwnMail</option>\r\n</select>");
}

TEST_F(ProductList, KeepsOneColumnWithoutBracketsInTheMailText) {
  products("Rk_HostList", "HostName", " Where [AgentS]=1", {});
  products("Rk_SqlList", "DbName", " Where [freeSql]=0 And [AgentS]=1", {});
  products("Rk_MySqlList", "DbName", " Where [freeSql]=0 And [AgentS]=1", {});
  products("Rk_MailList", "MailName", " Where [freeMail]=0 And AgentS=1", {});
  ShowPro_List(page.context, text("green"));
  EXPECT_EQ(page.db.statements().back(),
            "Select [ID],[MailName] From [Rk_MailList] Where [freeMail]=0 And AgentS=1");
}

TEST_F(ProductList, KeepsTheDotInTheHeadingsPath) {
  products("Rk_HostList", "HostName", "", {});
  products("Rk_SqlList", "DbName", " Where [freeSql]=0", {});
  products("Rk_MySqlList", "DbName", " Where [freeSql]=0", {});
  products("Rk_MailList", "MailName", " Where [freeMail]=0", {});
  EXPECT_NE(ShowPro_List(page.context, Value()).find("\"/DataBase.Index.asp\""), std::string::npos);
}

// --- product classes ----------------------------------------------------------------------------

constexpr char kClear[] =
    "<div style=\"font: 0px/0px sans-serif;clear: both;display: block\"> </div>";

class ServerList : public testing::Test {
 protected:
  std::string show(const char* show_page, const char* agent = "") {
    return Show_ServerList(page.context, {.Width = number(80),
                                          .sHeight = text("20"),
                                          .ShowPage = text(show_page),
                                          .Agent_User = text(agent)});
  }
  FakePage page;
};

TEST_F(ServerList, PageSelectsTheClassesInAnyLetterCaseAndLinksKeepIt) {
  page.db.answer(
      "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='host' And (AgentUser='' Or "
      "AgentUser Is Null)",
      {{"Id", "ClassName"}, {{number(1), text("Small")}, {number(2), Value::null()}}});
  EXPECT_EQ(show("/Host"),
            std::string("<div style=\"width:80px;height:20px;float:left;\"><a href=\"/Host?"
                        "ServerId=1\">Small</a></div><div style=\"width:80px;height:20px;"
                        "float:left;\"><a href=\"/Host?ServerId=2\"></a></div>") +
                kClear);
  EXPECT_EQ(page.db.log().back(), "close");
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(ServerList, EachAreaHasItsClassTypeAndAnUnknownPageNone) {
  const auto sent = [&](const char* show_page, const char* agent) {
    EXPECT_EQ(error_of([&] { show(show_page, agent); }), errors::kSqlSyntax);
    return page.db.statements().back();
  };
  EXPECT_EQ(sent("/mail/Mail.asp", ""),
            "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='mail' And (AgentUser='' "
            "Or AgentUser Is Null)");
  EXPECT_EQ(sent("/DataBase", "green"),
            "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='sql' And "
            "AgentUser='green'");
  EXPECT_EQ(sent("/other", ""),
            "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='' And (AgentUser='' Or "
            "AgentUser Is Null)");
  EXPECT_EQ(sent("", "green"),
            "Select [Id],[ClassName] From [Rk_ProClass] Where ClassType='' And AgentUser='green'");
}

TEST_F(ServerList, ReadsThePageBeforeTheAgent) {
  const auto error = [&](const Value& show_page, const Value& agent) {
    return error_of([&] {
      Show_ServerList(
          page.context,
          {.Width = Value(), .sHeight = Value(), .ShowPage = show_page, .Agent_User = agent});
    });
  };
  const Value array = Value::array(Array::of({number(1)}));
  EXPECT_EQ(error(array, Value::object(Ref<Object>())), 13);
  EXPECT_EQ(error(Value::object(Ref<Object>()), array), 91);
}

TEST_F(ServerList, NoClassesLeaveTheClearingElement) {
  page.db.answer(product_classes_sql("host", ""), {{"Id", "ClassName"}, {}});
  EXPECT_EQ(show("/host"), kClear);
}

}  // namespace
}  // namespace rk::catalogue
