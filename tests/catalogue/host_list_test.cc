#include "catalogue/host_list.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::real;
using tests::Rows;
using tests::text;

constexpr char kAllPlans[] =
    "Select [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],[Price],"
    "[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Order By [Id] Desc";
constexpr char kAllPlansForAgents[] =
    "Select [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],[Price],"
    "[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where [AgentS]=1 "
    "Order By [Id] Desc";

// A plan's row, by default one that shows nothing special.
struct Plan {
  int id = 1;
  std::string name = "Plan";
  Value price = number(100);
  Value mon_price = number(10);
  Value max_connections = number(50);
  Value free_ms_sql = number(0);
  Value free_my_sql = number(0);
  Value space = text("1G");
  Value scriptmaps = text("asp");

  std::vector<Value> row() const {
    return {number(id), space,     text(name), scriptmaps,  max_connections, number(9999),
            price,      mon_price, number(3),  free_ms_sql, free_my_sql};
  }
};

Rows plans(const std::vector<Plan>& list) {
  Rows rows{{"Id", "HostSpace", "HostName", "Scriptmaps", "MaxConnections", "MaxBandwidth", "Price",
             "MonPrice", "freeMail", "freeMsSql", "freeMySql"},
            {}};
  for (const Plan& plan : list) rows.rows.push_back(plan.row());
  return rows;
}

// Plans named 1, 2, 3 ...
Rows numbered_plans(int count) {
  std::vector<Plan> list;
  for (int i = 1; i <= count; ++i) list.push_back({.id = i, .name = std::to_string(i)});
  return plans(list);
}

class HostList : public testing::Test {
 protected:
  // A template whose only block shows each plan by `item` and, behind the list, `frame`.
  void style(const std::string& item, const std::string& frame = "") {
    page.put_template("Host-HostList-LitInfo.html",
                      "<!--HostList Style1-->[<!--HostList For Index-->" + item +
                          "<!--End HostList For Index-->]" + frame + "<!--End HostList Style1-->");
  }
  // What is shown, without the two markers that stay around the list.
  std::string show() {
    std::string html = Show_HostList(page.context, parameters).string();
    for (const std::string& marker :
         {std::string("<!--HostList For Index-->"), std::string("<!--End HostList For Index-->")}) {
      if (const auto at = html.find(marker); at != std::string::npos) html.erase(at, marker.size());
    }
    return html;
  }
  void visit_page(const std::string& number) { page.request.queries["page"] = number; }

  FakePage page;
  HostListParameters parameters{
      .Style = text("1"),
      .ListNum = text("0"),
      .NewLineNum = number(0),
      .LineCode = text("|"),
      .OrderType = text("Id"),
      .ConLineHeight = text("20"),
      .ListLineHeight = text("30"),
      .PageSize = number(10),
      .Agent_User = Value(),
  };
};

// --- what reaches the database ------------------------------------------------------------------

TEST_F(HostList, OpensReadsAndClosesInItsOrder) {
  style("{HostList_HostName}");
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "[1]");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  std::string("recordset 1 3 ") + kAllPlans,
                                                  "close recordset", "close"}));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(HostList, LooksUpEachPlansOwnPriceForAnAgent) {
  style("{HostList_HostName}");
  parameters.Agent_User = text("green");
  page.db.answer(kAllPlansForAgents, numbered_plans(2));
  const std::string price =
      "Select [AgentSetName],[Price],[MonPrice] From [Rk_AgentPriceSet] Where [AgentUser]='green' "
      "And [MastId]=";
  page.db.answer(price + "1 And [PriceType]='Host'", {{"AgentSetName", "Price", "MonPrice"}, {}});
  page.db.answer(price + "2 And [PriceType]='Host'",
                 {{"AgentSetName", "Price", "MonPrice"}, {{text("Own"), number(1), number(2)}}});
  EXPECT_EQ(show(), "[1Own]");
  EXPECT_EQ(page.log(),
            (std::vector<std::string>{
                "open Data Source=shop.db", std::string("recordset 1 3 ") + kAllPlansForAgents,
                "execute " + price + "1 And [PriceType]='Host'", "close recordset",
                "execute " + price + "2 And [PriceType]='Host'", "close recordset",
                "close recordset", "close"}));
}

TEST_F(HostList, SendsOneOfSixTexts) {
  const auto sent = [&](const char* list_num, const char* class_id, const char* agent) {
    parameters.ListNum = text(list_num);
    parameters.Agent_User = text(agent);
    return host_list_sql(parameters, class_id).text();
  };
  parameters.OrderType = text("Price");
  EXPECT_EQ(sent("0", "", ""),
            "Select [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],"
            "[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Order By "
            "[Price] Desc");
  EXPECT_EQ(sent("20", "", ""),
            "Select Top 20 [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],"
            "[MaxBandwidth],[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From "
            "[Rk_HostList] Order By [Price] Desc");
  EXPECT_EQ(sent("0", "", "green"),
            "Select [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],"
            "[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where "
            "[AgentS]=1 Order By [Price] Desc");
  EXPECT_EQ(sent("20", "", "green"),
            "Select Top 20 [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],"
            "[MaxBandwidth],[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From "
            "[Rk_HostList] Where [AgentS]=1 Order By [Price] Desc");
  EXPECT_EQ(sent("0", "7", "green"),
            "Select [aa].[Id],[aa].[HostSpace],[aa].[HostName],[aa].[Scriptmaps],"
            "[aa].[MaxConnections],[aa].[MaxBandwidth],[aa].[Price],[aa].[MonPrice],"
            "[aa].[freeMail],[aa].[freeMsSql],[aa].[freeMySql] From [Rk_HostList] As [aa],"
            "[Rk_AgentPriceSet] As [bb] Where [bb].[ProClass]=7 And [aa].[AgentS]=1 And "
            "[aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Host' Order By [aa].[Price] Desc");
  EXPECT_EQ(sent("20", "7", "green"),
            "Select Top 20 [aa].[Id],[aa].[HostSpace],[aa].[HostName],[aa].[Scriptmaps],"
            "[aa].[MaxConnections],[aa].[MaxBandwidth],[aa].[Price],[aa].[MonPrice],"
            "[aa].[freeMail],[aa].[freeMsSql],[aa].[freeMySql] From [Rk_HostList] As [aa],"
            "[Rk_AgentPriceSet] As [bb] Where [bb].[ProClass]=7 And [aa].[AgentS]=1 And "
            "[aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Host' Order By [aa].[Price] Desc");
  EXPECT_EQ(sent("0", "7", ""),
            "Select [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],"
            "[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where "
            "[ProClass]=7 Order By [Price] Desc");
  EXPECT_EQ(sent("20", "7", ""),
            "Select Top 20 [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],"
            "[MaxBandwidth],[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From "
            "[Rk_HostList] Where [ProClass]=7 Order By [Price] Desc");
}

TEST_F(HostList, ListNumNoughtMeansAllAsANumberToo) {
  parameters.ListNum = number(0);
  EXPECT_EQ(host_list_sql(parameters, "").text(), kAllPlans);
  parameters.ListNum = real(0);
  EXPECT_EQ(host_list_sql(parameters, "").text(), kAllPlans);
}

TEST_F(HostList, EmptyListNumMakesABrokenQuery) {
  parameters.ListNum = Value();
  EXPECT_TRUE(host_list_sql(parameters, "").text().starts_with("Select Top  [Id],"));
  parameters.ListNum = Value::null();
  EXPECT_TRUE(host_list_sql(parameters, "").text().starts_with("Select Top  [Id],"));
}

TEST_F(HostList, ClassOfTheRequestIsCleanedAndMarkedAsOutside) {
  style("{HostList_HostName}", "{ServerId}");
  page.request.queries["serverid"] = " 7 'x%*";
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax) << "no rows are scripted for it";
  const std::string sent = page.db.marked().back();
  EXPECT_NE(sent.find(" Where [ProClass]=<<7x>> Order By [Id] Desc"), std::string::npos) << sent;
  parameters.Agent_User = text("green");
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
  const std::string for_agent = page.db.marked().back();
  EXPECT_NE(for_agent.find(" Where [bb].[ProClass]=<<7x>> And "), std::string::npos) << for_agent;
}

TEST_F(HostList, ClassIsReadFromTheQueryStringAlone) {
  style("{HostList_HostName}");
  page.request.forms["serverid"] = "7";
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "[1]");
}

TEST_F(HostList, NullAgentIsTheMasterSite) {
  style("{HostList_HostName}");
  parameters.Agent_User = Value::null();
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "[1]");
}

// --- the plans ----------------------------------------------------------------------------------

TEST_F(HostList, FillsEveryTagOfAPlan) {
  style(
      "{HostListId} {HostList_HostName} {HostList_HostSpace} {Scriptmaps} {MaxConnections} "
      "{DataBase} {ConLineHeight} {Price} {MonPrice};");
  page.db.answer(kAllPlans, plans({{.id = 4, .name = "Small", .price = real(99.5)}}));
  EXPECT_EQ(show(), "[4 Small 1G asp 50 Access 20 99.5 10;]");
}

TEST_F(HostList, NoRowsShowAnEmptyListOnPageOne) {
  style("{HostList_HostName}", "{PageCount} {Page} {Page+1} {Page-1} {ListLineHeight}");
  parameters.NewLineNum = text("no number");
  page.db.answer(kAllPlans, plans({}));
  EXPECT_EQ(show(), "[]0 1 2 1 30");
}

TEST_F(HostList, UnlimitedConnectionsAreSaidInWords) {
  style("{MaxConnections};");
  page.db.answer(kAllPlans, plans({{.max_connections = number(9999)},
                                   {.max_connections = number(9998)},
                                   {.max_connections = text("9999")},
                                   {.max_connections = text(" 9999 ")}}));
  EXPECT_EQ(show(), "[无限制;9998;无限制;无限制;]");
}

TEST_F(HostList, MonthlyPriceOfNothingShowsADash) {
  style("{MonPrice};");
  page.db.answer(kAllPlans, plans({{.mon_price = number(0)},
                                   {.mon_price = number(-1)},
                                   {.mon_price = Value::null()},
                                   {.mon_price = real(0.5)}}));
  EXPECT_EQ(show(), "[-;-;-;0.5;]");
}

TEST_F(HostList, PriceIsShownAsStoredAlsoNought) {
  style("{Price};");
  page.db.answer(kAllPlans, plans({{.price = number(0)}, {.price = number(-5)}}));
  EXPECT_EQ(show(), "[0;-5;]");
}

TEST_F(HostList, KeepsADatabaseOptionForAllLaterPlans) {
  style("{DataBase};");
  page.db.answer(kAllPlans,
                 plans({{.name = "A"}, {.name = "B", .free_ms_sql = number(4)}, {.name = "C"}}));
  EXPECT_EQ(show(), "[Access;Access/Sql;Access/Sql;]");
  page.db.answer(kAllPlans, plans({{.free_my_sql = number(1)},
                                   {.free_ms_sql = number(2)},
                                   {.free_my_sql = Value::null()}}));
  EXPECT_EQ(show(), "[Access/MySql;Access/Sql/MySql;Access/Sql/MySql;]");
}

TEST_F(HostList, KeepsLosingTheListOnANullPrice) {
  style("{HostList_HostName};");
  page.db.answer(kAllPlans,
                 plans({{.name = "1"}, {.name = "2", .price = Value::null()}, {.name = "3"}}));
  EXPECT_EQ(show(), "[3;]");
}

TEST_F(HostList, AgentWithoutAPriceRowSeesTheMastersNameAndPrices) {
  style("{HostList_HostName} {Price} {MonPrice};");
  parameters.Agent_User = text("green");
  page.db.answer(kAllPlansForAgents, plans({{.id = 1, .name = "A"}, {.id = 2, .name = "B"}}));
  page.db.answer(host_price_sql("green", "1"),
                 {{"AgentSetName", "Price", "MonPrice"}, {{text("Own"), real(1.5), number(0)}}});
  page.db.answer(host_price_sql("green", "2"), {{"AgentSetName", "Price", "MonPrice"}, {}});
  EXPECT_EQ(show(), "[Own 1.5 -;B 100 10;]");
}

TEST_F(HostList, ValueThatHoldsATagIsFilledLater) {
  style("{HostList_HostName} {Price};");
  page.db.answer(kAllPlans, plans({{.name = "for {Price}"}}));
  EXPECT_EQ(show(), "[for 100 100;]");
}

// --- rows of the layout -------------------------------------------------------------------------

TEST_F(HostList, LineCodeStandsBehindEveryThirdPlanButTheLastOfAll) {
  style("{HostList_HostName}");
  parameters.NewLineNum = number(3);
  page.db.answer(kAllPlans, numbered_plans(7));
  EXPECT_EQ(show(), "[123|456|7]");
  page.db.answer(kAllPlans, numbered_plans(6));
  EXPECT_EQ(show(), "[123|456]");
}

TEST_F(HostList, KeepsBreakingTheLastRowOfAPageThatIsNotTheLast) {
  style("{HostList_HostName}");
  parameters.NewLineNum = number(2);
  parameters.PageSize = number(4);
  page.db.answer(kAllPlans, numbered_plans(5));
  EXPECT_EQ(show(), "[12|34|]");
}

TEST_F(HostList, NewLineNumIsReadAsAWholeNumber) {
  style("{HostList_HostName}");
  page.db.answer(kAllPlans, numbered_plans(4));
  parameters.NewLineNum = text("2");
  EXPECT_EQ(show(), "[12|34]");
  parameters.NewLineNum = text("2.5");
  EXPECT_EQ(show(), "[12|34]") << "halves round to even";
  parameters.NewLineNum = number(0);
  EXPECT_EQ(show(), "[1234]");
  parameters.NewLineNum = text("two");
  EXPECT_EQ(error_of([&] { show(); }), 13);
  parameters.NewLineNum = number(70000);
  EXPECT_EQ(error_of([&] { show(); }), 6);
  parameters.NewLineNum = Value::null();
  EXPECT_EQ(error_of([&] { show(); }), 94);
}

// --- pages --------------------------------------------------------------------------------------

class HostListPages : public HostList {
 protected:
  HostListPages() {
    style("{HostList_HostName}", " {PageCount}: {Page-1} {Page} {Page+1}");
    parameters.PageSize = number(2);
    page.db.answer(kAllPlans, numbered_plans(6));
  }
  std::string show_page(const std::string& number) {
    visit_page(number);
    return show();
  }
};

TEST_F(HostListPages, FirstPageWithoutAPageInTheRequest) {
  EXPECT_EQ(show(), "[12] 3: 1 1 2");
  parameters.PageSize = number(6);
  EXPECT_EQ(show(), "[123456] 1: 1 1 2") << "even when there is only one page";
  visit_page("");
  EXPECT_EQ(show(), "[123456] 1: 1 1 2");
}

TEST_F(HostListPages, PageInTheMiddle) {
  EXPECT_EQ(show_page("2"), "[34] 3: 1 2 3");
}

TEST_F(HostListPages, KeepsPointingPastTheLastPage) {
  EXPECT_EQ(show_page("3"), "[56] 3: 2 3 4");
}

TEST_F(HostListPages, PageBeyondTheLastShowsTheLastPlans) {
  EXPECT_EQ(show_page("99"), "[56] 3: 98 99 4");
}

TEST_F(HostListPages, PageNoughtOrBelowIsPageOne) {
  EXPECT_EQ(show_page("0"), "[12] 3: 1 1 2");
  EXPECT_EQ(show_page("-5"), "[12] 3: 1 1 2");
}

TEST_F(HostListPages, PageMayBeAnyNumber) {
  EXPECT_EQ(show_page(" 2 "), "[34] 3: 1 2 3");
  EXPECT_EQ(show_page("1e1"), "[56] 3: 9 10 4");
  EXPECT_EQ(show_page("2.5"), "[34] 3: 1.5 2.5 3") << "halves round to even, texts keep them";
  EXPECT_EQ(show_page("1.5"), "[34] 3: 0.5 1.5 2.5");
  EXPECT_EQ(show_page("1E+20"), "[56] 3: 1E+20 1E+20 4");
}

TEST_F(HostListPages, PageBelowAHalfIsRefused) {
  EXPECT_EQ(error_of([&] { show_page("0.3"); }), 3001);
}

TEST_F(HostListPages, PageThatIsNoNumberRaises) {
  EXPECT_EQ(error_of([&] { show_page("two"); }), 13);
  EXPECT_EQ(error_of([&] { show_page("1, 2"); }), 13);
  EXPECT_EQ(page.db.log().back(), "close") << "what was open is closed";
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(HostListPages, PageOfAnEmptyListRaises) {
  page.db.answer(kAllPlans, plans({}));
  EXPECT_EQ(error_of([&] { show_page("1"); }), 3021);
  EXPECT_EQ(show_page("0"), "[] 0: 1 1 2");
}

TEST_F(HostListPages, PageIsLookedForInTheWholeRequest) {
  page.request.forms["page"] = "2";
  EXPECT_EQ(show(), "[34] 3: 1 2 3");
}

TEST_F(HostListPages, PageSizeMustBeANumberAboveNought) {
  parameters.PageSize = text("3");
  EXPECT_EQ(show(), "[123] 2: 1 1 2");
  parameters.PageSize = number(0);
  EXPECT_EQ(error_of([&] { show(); }), 3001);
  parameters.PageSize = Value();
  EXPECT_EQ(error_of([&] { show(); }), 3001);
  parameters.PageSize = text("many");
  EXPECT_EQ(error_of([&] { show(); }), 13);
}

// --- the template -------------------------------------------------------------------------------

TEST_F(HostList, StyleChoosesTheBlock) {
  page.put_template("Host-HostList-LitInfo.html",
                    "<!--HostList Style-->plain<!--End HostList Style-->"
                    "<!--HostList Style2-->two<!--End HostList Style2-->");
  page.db.answer(kAllPlans, numbered_plans(1));
  parameters.Style = Value();
  EXPECT_EQ(show(), "plain");
  parameters.Style = number(2);
  EXPECT_EQ(show(), "two");
  parameters.Style = text("3");
  EXPECT_EQ(show(), "");
}

TEST_F(HostList, MarkersOfTheItemStayInTheBlock) {
  style("{HostList_HostName}");
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(Show_HostList(page.context, parameters).view(),
            "[<!--HostList For Index-->1<!--End HostList For Index-->]");
}

TEST_F(HostList, MissingTemplateShowsNothing) {
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "");
  EXPECT_EQ(page.log().size(), 4u) << "the plans are read all the same";
}

TEST_F(HostList, FrameIsFilledBeforeTheListTakesItsPlace) {
  style("{HostList_HostName}{Page}");
  page.db.answer(kAllPlans, numbered_plans(2));
  EXPECT_EQ(show(), "[{HostList_HostName}1]")
      << "the block's copy of the item no longer equals the item";
}

TEST_F(HostList, HeightThatBringsThePageCountIsFilledInTurn) {
  style("", "{ListLineHeight}");
  parameters.ListLineHeight = text("{PageCount}px");
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "[]1px");
}

TEST_F(HostList, NullHeightLosesTheWholeBlock) {
  style("{HostList_HostName}");
  parameters.ListLineHeight = Value::null();
  page.db.answer(kAllPlans, numbered_plans(1));
  EXPECT_EQ(show(), "");
}

TEST_F(HostList, ErrorsComeInTheOrderOfTheSteps) {
  style("{HostList_HostName}");
  page.db.answer(kAllPlans, numbered_plans(1));
  parameters.PageSize = text("many");
  visit_page("two");
  parameters.NewLineNum = text("three");
  parameters.OrderType = text("Nowhere");
  EXPECT_EQ(error_of([&] { show(); }), errors::kSqlSyntax);
  parameters.OrderType = text("Id");
  page.db.clear_log();
  EXPECT_EQ(error_of([&] { show(); }), 13);
  parameters.PageSize = number(0);
  EXPECT_EQ(error_of([&] { show(); }), 3001) << "the page size before the page";
  parameters.PageSize = number(5);
  visit_page("0.1");
  EXPECT_EQ(error_of([&] { show(); }), 3001) << "the page before the plans";
  visit_page("1");
  EXPECT_EQ(error_of([&] { show(); }), 13);
}

}  // namespace
}  // namespace rk::catalogue
