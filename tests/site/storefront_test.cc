#include "site/storefront.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::site {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::Rows;
using tests::text;

constexpr char kActiveTemplate[] = "Select [templatePath] From [Rk_Template] Where [UseThis]=1";
constexpr char kMasterDomain[] = "Select Top 1 SiteDomain From SysTem";

// A page asked for under `host`, of a master site under `site_domain` with these agents' rows.
class Storefront : public testing::Test {
 protected:
  void visit(const std::string& host, const std::string& site_domain) {
    page.request.server_variables["http_host"] = host;
    page.db.answer(kMasterDomain, {{"SiteDomain"}, {{text(site_domain)}}});
  }
  void agents(const std::string& host, std::vector<std::vector<Value>> rows) {
    page.db.answer("Select [AgentUser],[AgentDomain] From Rk_AgentSet Where [AgentDomain] Like '%" +
                       host + "%'",
                   {{"AgentUser", "AgentDomain"}, std::move(rows)});
  }
  // The agent has the template of this number, which lies in this folder.
  void agent_template(const std::string& agent, int id, const std::string& folder) {
    page.db.answer("Select template From Rk_AgentSet Where AgentUser='" + agent + "'",
                   {{"template"}, {{number(id)}}});
    page.db.answer("Select [templatePath] From [Rk_Template] Where Id=" + std::to_string(id),
                   {{"templatePath"}, {{text(folder)}}});
  }
  std::string folder() { return GetTempPath(page.context); }

  FakePage page;
};

TEST_F(Storefront, AsksTheDatabaseInItsOrderAndClosesWhatItOpened) {
  visit("Green.Example", "shop.example");
  agents("green.example", {{text("green"), text("green.example")}});
  agent_template("green", 7, "meadow");
  EXPECT_EQ(folder(), "/Template/meadow/");
  EXPECT_EQ(page.db.log(),
            (std::vector<std::string>{
                "open Data Source=shop.db",
                "execute Select [templatePath] From [Rk_Template] Where [UseThis]=1",
                "close recordset",
                "execute Select Top 1 SiteDomain From SysTem",
                "close recordset",
                "execute Select [AgentUser],[AgentDomain] From Rk_AgentSet Where [AgentDomain] "
                "Like '%green.example%'",
                "close recordset",
                "execute Select template From Rk_AgentSet Where AgentUser='green'",
                "close recordset",
                "execute Select [templatePath] From [Rk_Template] Where Id=7",
                "close recordset",
                "close",
            }));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(Storefront, NoSiteDomainMakesEveryHostTheMasterSite) {
  visit("green.example", "");
  agents("green.example", {{text("green"), text("green.example")}});
  EXPECT_EQ(folder(), "/Template/blue/");
  EXPECT_EQ(page.db.statements().size(), 2u);
}

TEST_F(Storefront, NullSiteDomainMakesEveryHostTheMasterSite) {
  visit("green.example", "");
  page.db.answer(kMasterDomain, {{"SiteDomain"}, {{Value::null()}}});
  EXPECT_EQ(folder(), "/Template/blue/");
}

TEST_F(Storefront, HostThatIsPartOfTheSiteDomainIsTheMasterSite) {
  visit("example", "www.shop.example,other.example");
  EXPECT_EQ(folder(), "/Template/blue/");
  visit("other.example", "www.shop.example,other.example");
  EXPECT_EQ(folder(), "/Template/blue/");
}

TEST_F(Storefront, CapitalsInTheSiteDomainNeverHoldTheLoweredHost) {
  visit("Shop.Example", "Shop.Example");
  agents("shop.example", {});
  EXPECT_EQ(folder(), "/Template/blue/");
  EXPECT_EQ(page.db.statements().size(), 3u) << "the agents were asked for";
  visit("Shop.Example", "WWW.shop.example");
  EXPECT_EQ(folder(), "/Template/blue/");
  EXPECT_EQ(page.db.statements().size(), 5u) << "this stretch has no capitals";
}

TEST_F(Storefront, ListOfDomainsMatchesAHostEqualToOneOfThem) {
  visit("two.example", "shop.example");
  agents("two.example", {{text("pair"), text("one.example,Two.Example")}});
  agent_template("pair", 3, "pair");
  EXPECT_EQ(folder(), "/Template/pair/");
}

TEST_F(Storefront, DomainThatMerelyHoldsTheHostDoesNotMatch) {
  visit("two.example", "shop.example");
  agents("two.example", {{text("long"), text("www.two.example")},
                         {text("list"), text("a.two.example,b.two.example")}});
  EXPECT_EQ(folder(), "/Template/blue/");
}

TEST_F(Storefront, KeepsTheLastOfSeveralMatchingLists) {
  visit("two.example", "shop.example");
  agents("two.example", {{text("first"), text("two.example,a.example")},
                         {text("second"), text("b.example,two.example")}});
  agent_template("second", 4, "second");
  EXPECT_EQ(folder(), "/Template/second/");
}

TEST_F(Storefront, FirstOfSeveralSingleDomainsWins) {
  visit("two.example", "shop.example");
  agents("two.example",
         {{text("first"), text("two.example")}, {text("second"), text("two.example")}});
  agent_template("first", 4, "first");
  EXPECT_EQ(folder(), "/Template/first/");
}

TEST_F(Storefront, SingleDomainEndsTheWalkBeforeALaterList) {
  visit("two.example", "shop.example");
  agents("two.example", {{text("list"), text("two.example,a.example")},
                         {text("single"), text("TWO.example")},
                         {text("late"), text("two.example,b.example")}});
  agent_template("single", 5, "single");
  EXPECT_EQ(folder(), "/Template/single/");
}

TEST_F(Storefront, FolderNameHasOneSlashBehindIt) {
  page.db.answer(kActiveTemplate, {{"templatePath"}, {{text("blue")}}});
  EXPECT_EQ(folder(), "/Template/blue/");
  page.db.answer(kActiveTemplate, {{"templatePath"}, {{text("blue/")}}});
  EXPECT_EQ(folder(), "/Template/blue/");
}

TEST_F(Storefront, HostStandsInTheStatementAsAValueOfTheRequest) {
  visit("x' Or '1'='1", "shop.example");
  EXPECT_EQ(error_of([&] { folder(); }), errors::kSqlSyntax) << "no rows are scripted for it";
  EXPECT_EQ(page.db.marked().back(),
            "Select [AgentUser],[AgentDomain] From Rk_AgentSet Where [AgentDomain] Like "
            "'%<<x' or '1'='1>>%'");
  EXPECT_EQ(page.db.log().back(), "close") << "an error closes the connection too";
}

TEST_F(Storefront, RowsThatAreMissingRaiseToThePage) {
  page.db.answer(kActiveTemplate, {{"templatePath"}, {}});
  EXPECT_EQ(error_of([&] { folder(); }), 3021);
  page.db.answer(kActiveTemplate, {{"templatePath"}, {{text("blue")}}});
  page.db.answer(kMasterDomain, {{"SiteDomain"}, {}});
  EXPECT_EQ(error_of([&] { folder(); }), 3021);

  visit("green.example", "shop.example");
  agents("green.example", {{text("green"), text("green.example")}});
  agent_template("green", 7, "meadow");
  page.db.answer("Select [templatePath] From [Rk_Template] Where Id=7", {{"templatePath"}, {}});
  EXPECT_EQ(error_of([&] { folder(); }), 3021) << "an agent's template that is not there";
}

TEST_F(Storefront, RaisesWhatOpeningTheDatabaseRaises) {
  page.db.fail_open(ScriptError(errors::kSqlFailure, "no database"));
  EXPECT_EQ(error_of([&] { folder(); }), errors::kSqlFailure);
}

TEST_F(Storefront, ScriptPathIsTheFolderOfThePage) {
  const auto path_of = [&](const std::string& script) {
    page.request.server_variables["script_name"] = script;
    return GetScriptPath(page.context);
  };
  EXPECT_EQ(path_of("/index.asp"), "");
  EXPECT_EQ(path_of("/host/index.asp"), "/host/");
  EXPECT_EQ(path_of("/a/b/c.asp"), "/a/b/");
  EXPECT_EQ(path_of("a/b/c.asp"), "/b/") << "what stands before the first slash is left out";
  EXPECT_EQ(path_of(""), "");
}

}  // namespace
}  // namespace rk::site
