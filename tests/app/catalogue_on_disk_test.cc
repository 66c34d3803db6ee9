// The catalogue's operations over a real database: what their statements find there, and what bad
// input comes to.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "catalogue/domain_lists.h"
#include "catalogue/host_info.h"
#include "catalogue/host_list.h"
#include "catalogue/plan_lists.h"
#include "catalogue/selectors.h"
#include "tests/app/storefront_on_disk.h"
#include "value/conversions.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::number;
using tests::text;

constexpr std::int32_t kSyntax = -2147217900;
constexpr std::int32_t kNoValue = -2147217904;

struct List {
  Text (*show)(const site::PageContext&, const PlanListParameters&);
  std::string file;
  std::string word;
  std::string name_tag;
  std::string table;
  std::string name;
  std::string free;
  std::string type;
  std::vector<std::string> sizes;
};

const std::vector<List>& lists() {
  static const std::vector<List> all{{Show_SqlList,
                                      "DataBase-SqlList-LitInfo.html",
                                      "SqlList",
                                      "{SqlList_SqlName}",
                                      "Rk_SqlList",
                                      "DbName",
                                      "freeSql",
                                      "Sql",
                                      {"db_MaxSize", "lg_MaxSize"}},
                                     {Show_MySqlList,
                                      "DataBase-MySqlList-LitInfo.html",
                                      "MySqlList",
                                      "{SqlList_SqlName}",
                                      "Rk_MySqlList",
                                      "DbName",
                                      "freeSql",
                                      "MySql",
                                      {"db_MaxSize"}},
                                     {Show_MailList,
                                      "Mail-MailList-LitInfo.html",
                                      "MailList",
                                      "{MailList_MailName}",
                                      "Rk_MailList",
                                      "MailName",
                                      "freeMail",
                                      "Mail",
                                      {"Size"}}};
  return all;
}

class PlanListsOnDisk : public tests::StorefrontOnDisk {
 protected:
  PlanListsOnDisk() {
    for (const List& list : lists()) {
      put_template(list.file, "<!--" + list.word + " Style--><!--" + list.word + " For Index-->" +
                                  list.name_tag + ":{Price};<!--End " + list.word +
                                  " For Index--><!--End " + list.word + " Style-->");
      // Sold alone: one, two (not by agents), five. The others only come with a hosting plan.
      run("Insert Into " + list.table + " (Id, " + list.name + ", Price, " + list.free +
          ", ProClass, AgentS) Values (1, 'one', 10, 0, 7, 1), (2, 'two', 20.5, 0, 7, 0), "
          "(3, 'three', 30, 1, 7, 1), (4, 'four', 40, -1, 7, 1), (5, 'five', 0, 0, 8, 1), "
          "(6, 'six', 60, Null, 7, 1);");
      for (const std::string& size : list.sizes)
        run("Update " + list.table + " Set " + size + " = 100");
      run("Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, "
          "ProClass) Values ('green', 1, '" +
          list.type +
          "', 'own one', 11, 9), "
          "('blue', 1, '" +
          list.type +
          "', 'blue one', 12, 9), "
          "('green', 2, '" +
          list.type + "', 'own two', 21, 9);");
    }
  }

  PlanListParameters parameters(const char* agent = "") const {
    return {.Style = Value(),
            .ListNum = text("0"),
            .NewLineNum = number(0),
            .LineCode = Value(),
            .OrderType = text("Id"),
            .ConLineHeight = text(""),
            .ListLineHeight = text(""),
            .Agent_User = text(agent)};
  }
  // The plans that a list shows, without its markers.
  std::string shown(const List& list, const PlanListParameters& given) const {
    std::string html = list.show(context, given).string();
    for (const char* begin : {"<!--", "<!--End "}) {
      const std::string marker = begin + list.word + " For Index-->";
      if (const auto at = html.find(marker); at != std::string::npos) html.erase(at, marker.size());
    }
    return html;
  }
};

TEST_F(PlanListsOnDisk, PlansThatOnlyComeFreeAreNeverListed) {
  for (const List& list : lists()) {
    EXPECT_EQ(shown(list, parameters()), "five:0;two:20.5;one:10;") << list.word;
  }
}

TEST_F(PlanListsOnDisk, AgentsSeeWhatTheyMaySellUnderTheirOwnNames) {
  for (const List& list : lists()) {
    EXPECT_EQ(shown(list, parameters("green")), "five:0;own one:11;") << list.word;
  }
}

TEST_F(PlanListsOnDisk, AnAgentWithoutPriceRowsSeesTheMastersNamesAndPrices) {
  for (const List& list : lists()) {
    EXPECT_EQ(shown(list, parameters("red")), "five:0;one:10;") << list.word;
  }
}

TEST_F(PlanListsOnDisk, TheMastersClassIsThatOfThePlans) {
  ask("serverid", "7");
  for (const List& list : lists()) {
    PlanListParameters given = parameters();
    EXPECT_EQ(shown(list, given), "two:20.5;one:10;") << list.word;
    given.ListNum = text("9");
    EXPECT_EQ(shown(list, given), "two:20.5;one:10;") << list.word;
  }
}

TEST_F(PlanListsOnDisk, KeepsListingAPlanForEveryAgentsPriceRowOfTheClass) {
  ask("serverid", "9");
  for (const List& list : lists()) {
    EXPECT_EQ(shown(list, parameters("green")), "own one:11;own one:11;") << list.word;
  }
}

TEST_F(PlanListsOnDisk, ListNumBoundsTheRows) {
  for (const List& list : lists()) {
    PlanListParameters given = parameters();
    given.ListNum = number(2);
    EXPECT_EQ(shown(list, given), "five:0;two:20.5;") << list.word;
    for (const char* bad : {"", "x", "-1"}) {
      given.ListNum = text(bad);
      EXPECT_NE(error_of([&] { shown(list, given); }), 0) << list.word << " " << bad;
    }
  }
}

TEST_F(PlanListsOnDisk, OrderTypeNamesAColumn) {
  for (const List& list : lists()) {
    PlanListParameters given = parameters();
    given.OrderType = text("Price");
    EXPECT_EQ(shown(list, given), "two:20.5;one:10;five:0;") << list.word;
    given.OrderType = text("NoSuchColumn");
    EXPECT_EQ(error_of([&] { shown(list, given); }), kNoValue) << list.word;
    given.OrderType = Value();
    EXPECT_EQ(error_of([&] { shown(list, given); }), kSyntax) << list.word;
  }
}

TEST_F(PlanListsOnDisk, QuotesAndBlanksOfTheClassAreTakenOut) {
  for (const List& list : lists()) {
    for (const char* id : {"7", " 7 ", "'7'", "7*", "%7", "+7", "7.0", "7e0"}) {
      ask("serverid", id);
      EXPECT_EQ(shown(list, parameters()), "two:20.5;one:10;") << list.word << " " << id;
    }
    ask("serverid", "7 7");
    EXPECT_EQ(shown(list, parameters()), "") << "two words run together";
    ask("serverid", "' *%'");
    EXPECT_EQ(shown(list, parameters()), "five:0;two:20.5;one:10;") << "nothing is left of it";
  }
}

TEST_F(PlanListsOnDisk, AClassThatIsNoNumberIsRefused) {
  for (const List& list : lists()) {
    for (const char* agent : {"", "green"}) {
      ask("serverid", "abc");
      EXPECT_EQ(error_of([&] { shown(list, parameters(agent)); }), kNoValue) << list.word;
      for (const char* id :
           {"7 Or 1=1", "7;8", "(7)", "7--", "\"7\"", "7\tUnion Select 1", "[Id]"}) {
        ask("serverid", id);
        EXPECT_EQ(error_of([&] { shown(list, parameters(agent)); }), kSyntax)
            << list.word << " " << id;
      }
    }
  }
}

TEST_F(PlanListsOnDisk, AClassOfAnySizeIsAClassWithoutPlans) {
  for (const List& list : lists()) {
    for (const char* id : {"99999999999999999999", "-99999999999999999999", "1e300", "0", "7.5"}) {
      ask("serverid", id);
      EXPECT_EQ(shown(list, parameters()), "") << list.word << " " << id;
    }
  }
}

TEST_F(PlanListsOnDisk, ANullInAShownColumnLosesThePlansBeforeIt) {
  for (const List& list : lists()) {
    std::vector<std::string> columns = list.sizes;
    columns.insert(columns.end(), {list.name, "Price"});
    for (const std::string& column : columns) {
      run("Update " + list.table + " Set " + column + " = Null Where Id = 2");
      EXPECT_EQ(shown(list, parameters()), "one:10;") << list.word << " " << column;
      run("Update " + list.table + " Set " + column + " = 1 Where Id = 2");
    }
  }
}

// --- the page of a plan -------------------------------------------------------------------------

class HostInfoOnDisk : public tests::StorefrontOnDisk {
 protected:
  HostInfoOnDisk() {
    put_template("Host-ShowHost-Info.html",
                 "{HostName}|{HostSpace}|{HostPrice}|{id}|{HostNo}|{HostInfo}|{MaxConnections}|"
                 "{Scriptmaps}|{MaxBandwidth}|{vPathNo}|{CPU}|{FreeMail}|{FreeDB}|{Update}|"
                 "{TestDay}");
    run("Insert Into Rk_HostList (Id, HostName, HostSpace, Scriptmaps, MaxConnections, "
        "MaxBandwidth, Price, MonPrice, freeMail, freeMsSql, freeMySql, AgentS, HostNo, HostInfo, "
        "vPathNo, AppModeName, TestDay, canupdate) Values "
        "(1, 'all', '1G', 'asp', 9999, 9999, 99.5, 10, 3, 4, 5, 1, 'H1', 'a' || char(13, 10) || "
        "'b', 2, 'pool', 7, 1), "
        "(2, 'master', '2G', 'asp', 50, 64, 100, 0, 0, 0, 5, 0, 'H2', '', 2, 'pool', 7, 0);"
        "Insert Into Rk_AppPoolMode (AppPoolMoldName, CPULimit) Values ('pool', 30);"
        "Insert Into Rk_MailList (Id, MailName) Values (3, 'mail');"
        "Insert Into Rk_SqlList (Id, DbName) Values (4, 'sql');"
        "Insert Into Rk_MySqlList (Id, DbName) Values (5, 'my');"
        "Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, "
        "MonPrice) "
        "Values ('green', 1, 'Host', 'own', 120, 12), ('green', 1, 'Sql', 'no host', 1, 1);");
  }

  Value show(const std::string& id, const char* agent = "") {
    ask("id", id);
    return Show_HostInfo(context, text(agent));
  }
  std::string shown(const std::string& id, const char* agent = "") {
    return joined_text(show(id, agent)).string();
  }
};

TEST_F(HostInfoOnDisk, ShowsThePlanWithAllThatComesWithIt) {
  EXPECT_EQ(shown("1"),
            "all|1G|99.5元/年 10元/月|1|H1|a<br>\nb|无限制|asp|无限制|2|30%|"
            "<a href='/mail/mail.asp?id=3'>mail</a>|sql/my|支持|7");
  EXPECT_EQ(shown("2"), "master|2G|100元/年 |2|H2||50 个|asp|64 KB/S|2|30%|无|my|不支持|7");
}

TEST_F(HostInfoOnDisk, AnAgentSeesItsOwnNameAndPrices) {
  EXPECT_EQ(shown("1", "green").substr(0, 29), "own|1G|120元/年 12元/月|1");
  EXPECT_EQ(shown("1", "blue").substr(0, 6), "all|1G");
}

TEST_F(HostInfoOnDisk, APlanThatAgentsMayNotSellIsNoneOfTheirs) {
  EXPECT_FALSE(show("2").is_empty());
  EXPECT_TRUE(show("2", "green").is_empty());
}

TEST_F(HostInfoOnDisk, AnIdThatIsNoNumberShowsNothing) {
  for (const char* id : {"", "abc", "1x", "1 Or 1=1", "1;2", "--1", "' '", "#1"}) {
    EXPECT_TRUE(show(id).is_empty()) << id;
  }
}

TEST_F(HostInfoOnDisk, AnIdOfAnySizeShowsNothing) {
  for (const char* id : {"0", "-1", "3", "1.5", "2147483648", "99999999999999999999", "1e300"}) {
    EXPECT_TRUE(show(id).is_empty()) << id;
  }
}

TEST_F(HostInfoOnDisk, AnIdInAnotherSpellingOfTheNumberIsThatPlan) {
  for (const char* id : {"1", " 1 ", "'1'", "+1", "1.0", "1e0"}) {
    EXPECT_EQ(shown(id).substr(0, 3), "all") << id;
  }
}

TEST_F(HostInfoOnDisk, ANumberThatNoStatementMayHoldIsRefused) {
  for (const char* id : {"(1)", "1,000"}) {
    EXPECT_EQ(error_of([&] { show(id); }), kSyntax) << id;
  }
}

TEST_F(HostInfoOnDisk, WhatThePlanNamesMustBeThere) {
  for (const char* change : {"freeMail = 99", "freeMsSql = 99", "freeMySql = 99",
                             "AppModeName = 'none'", "AppModeName = Null"}) {
    run(std::string("Update Rk_HostList Set ") + change + " Where Id = 1");
    EXPECT_EQ(error_of([&] { show("1"); }), 3021) << change;
    run("Update Rk_HostList Set freeMail = 3, freeMsSql = 4, freeMySql = 5, AppModeName = 'pool'");
  }
}

TEST_F(HostInfoOnDisk, ANullInAShownColumnLosesTheWholeText) {
  for (const char* column :
       {"HostName", "HostSpace", "HostNo", "Scriptmaps", "vPathNo", "TestDay"}) {
    run(std::string("Update Rk_HostList Set ") + column + " = Null Where Id = 1");
    const Value html = show("1");
    EXPECT_TRUE(html.is_text() && html.as_view().empty()) << column;
    run(std::string("Update Rk_HostList Set ") + column + " = 'x' Where Id = 1");
  }
}

TEST_F(HostInfoOnDisk, ANullInAColumnThatIsJoinedOrTestedCountsAsNothing) {
  run("Update Rk_HostList Set Price = Null, MonPrice = Null, MaxConnections = Null, "
      "MaxBandwidth = Null, freeMail = Null, freeMsSql = Null, freeMySql = Null, canupdate = Null, "
      "ProClass = Null Where Id = 1");
  EXPECT_EQ(shown("1"), "all|1G|元/年 |1|H1|a<br>\nb| 个|asp| KB/S|2|30%|无|无|不支持|7");
  run("Update Rk_HostList Set freeMail = 3, freeMsSql = 4, freeMySql = 5 Where Id = 1;"
      "Update Rk_MailList Set MailName = Null; Update Rk_SqlList Set DbName = Null;"
      "Update Rk_AppPoolMode Set CPULimit = Null");
  EXPECT_EQ(shown("1"),
            "all|1G|元/年 |1|H1|a<br>\nb| 个|asp| KB/S|2|%|"
            "<a href='/mail/mail.asp?id=3'></a>|my|不支持|7");
}

TEST_F(HostInfoOnDisk, ANullInfoRaises) {
  run("Update Rk_HostList Set HostInfo = Null Where Id = 1");
  EXPECT_EQ(error_of([&] { show("1"); }), 94);
}

// --- domains ------------------------------------------------------------------------------------

class DomainsOnDisk : public tests::StorefrontOnDisk {
 protected:
  DomainsOnDisk() {
    put_template("Domain-PriceList.html",
                 "<!--PriceList Style1--><!--Loop-->{Domain} {Price} {UpdatePrice} {id}{Id};"
                 "<!--End Loop--><!--End PriceList Style1-->");
    run("Insert Into Rk_DomainList (Id, Domain, Type, DefaultCheck, cndomain, Money, UpdateMoney, "
        "AgentS, IdKey) Values (1, '.com', '.com', 1, 0, 60, 65, 1, 30), "
        "(2, '.com.cn', '.com.cn', 0, 0, 30, 35.5, 0, 20), (3, '.公司', '.公司', 0, 1, 200, 210, "
        "1, "
        "10);"
        "Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName, Price, "
        "UpdatePrice) Values ('green', 1, 'Domain', 'not shown', 61, 66), "
        "('blue', 3, 'Domain', Null, 1, 1);");
  }

  std::string prices(const char* language, const char* agent = "", const char* style = "1") {
    std::string html =
        Show_DomainPriceList(context, text(style), text(language), text(agent)).string();
    for (const std::string marker : {"<!--Loop-->", "<!--End Loop-->"}) {
      if (const auto at = html.find(marker); at != std::string::npos) html.erase(at, marker.size());
    }
    return html;
  }
  // The names of the boxes, in order.
  std::string boxes(const char* group, const char* agent = "", const Value& top = text("0")) {
    const std::string html = Show_sDomainList(context, {.TopNum = top,
                                                        .InputWidth = number(80),
                                                        .InputHeight = number(20),
                                                        .DomainType = text(group),
                                                        .OrderType = text("IdKey"),
                                                        .Agent_User = text(agent)});
    std::string names;
    const std::string before = " name=\"";
    for (auto at = html.find(before); at != std::string::npos; at = html.find(before, at + 1)) {
      const auto begin = at + before.size();
      names += html.substr(begin, html.find('"', begin) - begin) + " ";
    }
    return names;
  }
};

TEST_F(DomainsOnDisk, TheLanguageChoosesTheGroupAndOtherWordsChooseAll) {
  EXPECT_EQ(prices("EN"), ".com 60 65 11;.com.cn 30 35.5 22;");
  EXPECT_EQ(prices("CN"), ".公司 200 210 33;");
  for (const char* language : {"en", "cn", "CH", ""}) {
    EXPECT_EQ(prices(language), ".com 60 65 11;.com.cn 30 35.5 22;.公司 200 210 33;") << language;
  }
}

TEST_F(DomainsOnDisk, AgentsSeeWhatTheyMaySellAtTheirOwnPrices) {
  EXPECT_EQ(prices("", "green"), ".com 61 66 11;.公司 200 210 33;");
  EXPECT_EQ(prices("CN", "blue"), ".公司 1 1 33;");
}

TEST_F(DomainsOnDisk, ANullPriceLosesTheSuffixesBeforeIt) {
  run("Update Rk_DomainList Set Money = Null Where Id = 2");
  EXPECT_EQ(prices(""), ".公司 200 210 33;");
}

TEST_F(DomainsOnDisk, AStyleWithoutMarkersShowsNothing) {
  EXPECT_EQ(prices("EN", "", "2"), "");
}

TEST_F(DomainsOnDisk, TheBoxesGoByTheirOwnSpellingOfTheGroup) {
  EXPECT_EQ(boxes("EN"), "com comcn ");
  EXPECT_EQ(boxes("CH"), "公司 ");
  EXPECT_EQ(boxes("CN"), "com comcn 公司 ");
  EXPECT_EQ(boxes("", "green"), "com 公司 ");
}

TEST_F(DomainsOnDisk, TopNumBoundsTheBoxes) {
  EXPECT_EQ(boxes("", "", number(2)), "com comcn ");
  EXPECT_EQ(boxes("", "", Value::real(0.4)), "com comcn 公司 ") << "rounds to no bound";
  EXPECT_EQ(error_of([&] { boxes("", "", text("two")); }), 13);
  EXPECT_EQ(error_of([&] { boxes("", "", text("")); }), 13);
  EXPECT_EQ(error_of([&] { boxes("", "", number(40000)); }), 6);
  EXPECT_EQ(error_of([&] { boxes("", "", Value::real(1.5)); }), kSyntax);
  EXPECT_EQ(error_of([&] { boxes("", "", number(-1)); }), kSyntax);
}

TEST_F(DomainsOnDisk, ANullFlagLeavesTheBoxUntickedAndANullSuffixRaises) {
  run("Update Rk_DomainList Set DefaultCheck = Null");
  EXPECT_EQ(boxes("EN"), "com comcn ");
  run("Update Rk_DomainList Set Type = Null Where Id = 2");
  EXPECT_EQ(error_of([&] { boxes("EN"); }), 94);
}

// --- selectors ----------------------------------------------------------------------------------

class SelectorsOnDisk : public tests::StorefrontOnDisk {
 protected:
  std::string classes(const char* page, const char* agent = "") const {
    const std::string html = Show_ServerList(context, {.Width = number(80),
                                                       .sHeight = number(20),
                                                       .ShowPage = text(page),
                                                       .Agent_User = text(agent)});
    std::string links;
    for (auto at = html.find("href=\""); at != std::string::npos;
         at = html.find("href=\"", at + 1)) {
      links += html.substr(at + 6, html.find("</a>", at) - at - 6) + " ";
    }
    return links;
  }
};

TEST_F(SelectorsOnDisk, ClassesBelongToTheirOwnerAndTheirArea) {
  run("Insert Into Rk_ProClass (Id, ClassName, ClassType, AgentUser) Values "
      "(1, 'a', 'host', Null), (2, 'b', 'host', ''), (3, 'c', 'host', 'green'), "
      "(4, 'd', 'mail', ''), (5, 'e', 'sql', 'green'), (6, 'f', '', ''), (7, Null, 'host', '');");
  EXPECT_EQ(classes("/Host"), "/Host?ServerId=1\">a /Host?ServerId=2\">b /Host?ServerId=7\"> ");
  EXPECT_EQ(classes("/host", "green"), "/host?ServerId=3\">c ");
  EXPECT_EQ(classes("/Mail/MAIL.asp"), "/Mail/MAIL.asp?ServerId=4\">d ");
  EXPECT_EQ(classes("/database", "green"), "/database?ServerId=5\">e ");
  EXPECT_EQ(classes("/other.asp"), "/other.asp?ServerId=6\">f ");
}

TEST_F(SelectorsOnDisk, TheJumpListShowsProductsInTheOrderStored) {
  run("Insert Into Rk_HostList (Id, HostName, AgentS) Values (2, 'h2', 1), (1, 'h1', 0);"
      "Insert Into Rk_SqlList (Id, DbName, freeSql, AgentS) Values (3, 's3', 0, 1), (4, 's4', 1, "
      "1);"
      "Insert Into Rk_MySqlList (Id, DbName, freeSql, AgentS) Values (5, Null, 0, 1);"
      "Insert Into Rk_MailList (Id, MailName, freeMail, AgentS) Values (6, 'm6', 0, 1);"
      "Insert Into Rk_AgentPriceSet (AgentUser, MastId, PriceType, AgentSetName) Values "
      "('green', 2, 'Host', 'own'), ('green', 3, 'Mail', 'another table'), "
      "('green', 6, 'Mail', Null);");
  const auto names = [&](const char* agent) {
    const std::string html = ShowPro_List(context, text(agent));
    std::string found;
    for (auto at = html.find("\">", html.find("<option value")); at != std::string::npos;
         at = html.find("\">", at + 1)) {
      found += html.substr(at + 2, html.find("</option>", at) - at - 2) + " ";
    }
    return found;
  };
  EXPECT_EQ(names(""), "＝＝虚拟主机＝＝ ┠h1 ┠h2 ＝＝数据库＝＝ s3  ＝＝企业邮局＝＝ ┠m6 ");
  EXPECT_EQ(names("green"), "＝＝虚拟主机＝＝ ┠own ＝＝数据库＝＝ s3  ＝＝企业邮局＝＝ ┠ ");
}

}  // namespace
}  // namespace rk::catalogue
