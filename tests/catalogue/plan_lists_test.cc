#include "catalogue/plan_lists.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::real;
using tests::Rows;
using tests::text;

PlanListParameters usual_parameters() {
  return {.Style = text("1"),
          .ListNum = text("0"),
          .NewLineNum = number(0),
          .LineCode = text("|"),
          .OrderType = text("Id"),
          .ConLineHeight = text("20"),
          .ListLineHeight = text("30"),
          .Agent_User = Value()};
}

// --- the statements -----------------------------------------------------------------------------

struct SqlCase {
  PlanList list;
  const char* list_num;
  const char* class_id;
  const char* agent;
  const char* sql;
};

constexpr SqlCase kSqlCases[] = {
    {PlanList::Sql, "0", "", "",
     "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where [freesql]=0 "
     "Order By [Price] Desc"},
    {PlanList::Sql, "5", "", "",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where "
     "[freesql]=0 Order By [Price] Desc"},
    {PlanList::Sql, "0", "", "green",
     "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where [freesql]=0 "
     "And [AgentS]=1 Order By [Price] Desc"},
    {PlanList::Sql, "5", "", "green",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where "
     "[freesql]=0 And [AgentS]=1 Order By [Price] Desc"},
    {PlanList::Sql, "0", "7", "",
     "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where [freesql]=0 "
     "And [ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::Sql, "5", "7", "",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where "
     "[freesql]=0 And [ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::Sql, "0", "7", "green",
     "Select [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[lg_MaxSize],[aa].[Price] From "
     "[Rk_SqlList] As [aa],[Rk_AgentPriceSet] As [bb] Where [aa].[freesql]=0 And "
     "[bb].[ProClass]=<<7>> And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And "
     "[bb].[PriceType]='Sql' Order By [aa].[Price] Desc"},
    {PlanList::Sql, "5", "7", "green",
     "Select Top 5 [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[lg_MaxSize],[aa].[Price] From "
     "[Rk_SqlList] As [aa],[Rk_AgentPriceSet] As [bb] Where [aa].[freesql]=0 And "
     "[bb].[ProClass]=<<7>> And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And "
     "[bb].[PriceType]='Sql' Order By [aa].[Price] Desc"},
    {PlanList::MySql, "0", "", "",
     "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 Order By "
     "[Price] Desc"},
    {PlanList::MySql, "5", "", "",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 Order "
     "By [Price] Desc"},
    {PlanList::MySql, "0", "", "green",
     "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 And "
     "[AgentS]=1 Order By [Price] Desc"},
    {PlanList::MySql, "5", "", "green",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 And "
     "[AgentS]=1 Order By [Price] Desc"},
    {PlanList::MySql, "0", "7", "",
     "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=False And "
     "[ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::MySql, "5", "7", "",
     "Select Top 5 [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 And "
     "[ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::MySql, "0", "7", "green",
     "Select [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[Price] From [Rk_MySqlList] As [aa],"
     "[Rk_AgentPriceSet] As [bb] Where [aa].[freesql]=0 And [bb].[ProClass]=<<7>> And "
     "[aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='MySql' Order By "
     "[aa].[Price] Desc"},
    {PlanList::MySql, "5", "7", "green",
     "Select Top 5 [aa].[Id],[aa].[DbName],[aa].[db_MaxSize],[aa].[Price] From [Rk_MySqlList] As "
     "[aa],[Rk_AgentPriceSet] As [bb] Where [aa].[freesql]=0 And [bb].[ProClass]=<<7>> And "
     "[aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='MySql' Order By "
     "[aa].[Price] Desc"},
    {PlanList::Mail, "0", "", "",
     "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 Order By "
     "[Price] Desc"},
    {PlanList::Mail, "5", "", "",
     "Select Top 5 [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 "
     "Order By [Price] Desc"},
    {PlanList::Mail, "0", "", "green",
     "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 And "
     "[AgentS]=1 Order By [Price] Desc"},
    {PlanList::Mail, "5", "", "green",
     "Select Top 5 [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 And "
     "[AgentS]=1 Order By [Price] Desc"},
    {PlanList::Mail, "0", "7", "",
     "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 And "
     "[ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::Mail, "5", "7", "",
     "Select Top 5 [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 And "
     "[ProClass]=<<7>> Order By [Price] Desc"},
    {PlanList::Mail, "0", "7", "green",
     "Select [aa].[Id],[aa].[Size],[aa].[MailName],[aa].[Num],[aa].[Price] From [Rk_MailList] As "
     "[aa],[Rk_AgentPriceSet] As [bb] Where [aa].[freemail]=0 And [bb].[ProClass]=<<7>> And "
     "[aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And [bb].[PriceType]='Mail' Order By "
     "[aa].[Price] Desc"},
    {PlanList::Mail, "5", "7", "green",
     "Select Top 5 [aa].[Id],[aa].[Size],[aa].[MailName],[aa].[Num],[aa].[Price] From "
     "[Rk_MailList] As [aa],[Rk_AgentPriceSet] As [bb] Where [aa].[freemail]=0 And "
     "[bb].[ProClass]=<<7>> And [aa].[AgentS]=1 And [aa].[Id]=[bb].[MastId] And "
     "[bb].[PriceType]='Mail' Order By [aa].[Price] Desc"},
};

// The statement with what came from the request between << and >>.
std::string marked(const platform::SqlText& sql) {
  std::string text = sql.text();
  for (auto stretch = sql.outside().rbegin(); stretch != sql.outside().rend(); ++stretch) {
    text.insert(stretch->end, ">>").insert(stretch->begin, "<<");
  }
  return text;
}

TEST(PlanLists, SendTheirTextsLetterByLetter) {
  for (const SqlCase& row : kSqlCases) {
    PlanListParameters parameters = usual_parameters();
    parameters.ListNum = text(row.list_num);
    parameters.OrderType = text("Price");
    parameters.Agent_User = text(row.agent);
    EXPECT_EQ(marked(plan_list_sql(row.list, parameters, row.class_id)), row.sql);
  }
}

TEST(PlanLists, LookUpPricesByTheirOwnType) {
  const std::string head =
      "Select [AgentSetName],[Price] From [Rk_AgentPriceSet] Where [AgentUser]='green' And "
      "[MastId]=4";
  EXPECT_EQ(plan_price_sql(PlanList::Sql, "green", "4"), head + " And [PriceType]='Sql'");
  EXPECT_EQ(plan_price_sql(PlanList::MySql, "green", "4"), head + " And [PriceType]='MySql'");
  EXPECT_EQ(plan_price_sql(PlanList::Mail, "green", "4"), head + " And [PriceType]='Mail'");
}

TEST(PlanLists, EmptyListNumMakesABrokenQuery) {
  PlanListParameters parameters = usual_parameters();
  parameters.ListNum = Value();
  EXPECT_EQ(plan_list_sql(PlanList::MySql, parameters, "").text(),
            "Select Top  [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 "
            "Order By [Id] Desc");
}

// --- the lists ----------------------------------------------------------------------------------

class PlanListsPage : public testing::Test {
 protected:
  struct Kind {
    std::string file;
    std::string name;  // in the markers
    Text (*show)(const site::PageContext&, const PlanListParameters&);
  };
  static Kind sql() { return {"DataBase-SqlList-LitInfo.html", "SqlList", Show_SqlList}; }
  static Kind my_sql() { return {"DataBase-MySqlList-LitInfo.html", "MySqlList", Show_MySqlList}; }
  static Kind mail() { return {"Mail-MailList-LitInfo.html", "MailList", Show_MailList}; }

  void style(const Kind& kind, const std::string& item, const std::string& frame = "") {
    page.put_template(kind.file, "<!--" + kind.name + " Style1-->[<!--" + kind.name +
                                     " For Index-->" + item + "<!--End " + kind.name +
                                     " For Index-->]" + frame + "<!--End " + kind.name +
                                     " Style1-->");
  }
  // What is shown, without the two markers that stay around the list.
  std::string show(const Kind& kind) {
    std::string html = kind.show(page.context, parameters).string();
    for (const char* start : {"<!--", "<!--End "}) {
      const std::string marker = start + kind.name + " For Index-->";
      if (const auto at = html.find(marker); at != std::string::npos) html.erase(at, marker.size());
    }
    return html;
  }
  // Plans named 1, 2, 3 ... of the database lists.
  void answer_sql(int count) {
    Rows rows{{"Id", "DbName", "db_MaxSize", "lg_MaxSize", "Price"}, {}};
    for (int i = 1; i <= count; ++i) {
      rows.rows.push_back({number(i), text(std::to_string(i)), number(100), number(50), real(9.5)});
    }
    page.db.answer(kSqlCasesPlain, rows);
  }
  void answer_my_sql(int count) {
    Rows rows{{"Id", "DbName", "db_MaxSize", "Price"}, {}};
    for (int i = 1; i <= count; ++i) {
      rows.rows.push_back({number(i), text(std::to_string(i)), number(100), number(0)});
    }
    page.db.answer(
        "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=0 Order By "
        "[Id] Desc",
        rows);
  }
  void answer_mail(int count) {
    Rows rows{{"Id", "Size", "MailName", "Num", "Price"}, {}};
    for (int i = 1; i <= count; ++i) {
      rows.rows.push_back({number(i), number(500), text(std::to_string(i)), number(3), number(80)});
    }
    page.db.answer(
        "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 Order "
        "By [Id] Desc",
        rows);
  }

  static constexpr char kSqlCasesPlain[] =
      "Select [Id],[DbName],[db_MaxSize],[lg_MaxSize],[Price] From [Rk_SqlList] Where [freesql]=0 "
      "Order By [Id] Desc";
  FakePage page;
  PlanListParameters parameters = usual_parameters();
};

TEST_F(PlanListsPage, SqlListFillsItsTags) {
  style(sql(),
        "{SqlListId} {SqlList_SqlName} {db_MaxSize} {lg_MaxSize} {ListLineHeight} "
        "{ConLineHeight} {Price};",
        "{ListLineHeight}{ServerId}");
  answer_sql(1);
  EXPECT_EQ(show(sql()), "[1 1 100 50 30 20 9.5;]30{ServerId}");
  EXPECT_EQ(page.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                  std::string("recordset 1 3 ") + kSqlCasesPlain,
                                                  "close recordset", "close"}));
  EXPECT_EQ(page.db.reading(), 0);
}

TEST_F(PlanListsPage, KeepsTheSqlServerListsTagsInTheMySqlList) {
  style(my_sql(),
        "{SqlListId} {SqlList_SqlName} {db_MaxSize} {lg_MaxSize} {ConLineHeight} {Price};",
        "{ListLineHeight}");
  answer_my_sql(1);
  EXPECT_EQ(show(my_sql()), "[1 1 100 {lg_MaxSize} 20 0;]30");
}

TEST_F(PlanListsPage, MailListFillsItsTags) {
  style(mail(), "{MailListId} {MailList_MailName} {Size} {Num} {ConLineHeight} {Price};",
        "{ListLineHeight}");
  answer_mail(1);
  EXPECT_EQ(show(mail()), "[1 1 500 {Num} 20 80;]30");
}

TEST_F(PlanListsPage, NoRowsShowAnEmptyList) {
  style(sql(), "{SqlList_SqlName}");
  style(my_sql(), "{SqlList_SqlName}");
  style(mail(), "{MailList_MailName}");
  answer_sql(0);
  answer_my_sql(0);
  answer_mail(0);
  EXPECT_EQ(show(sql()), "[]");
  EXPECT_EQ(show(my_sql()), "[]");
  EXPECT_EQ(show(mail()), "[]");
}

TEST_F(PlanListsPage, FivePlansBreakBehindTheSecondAndTheFourth) {
  parameters.NewLineNum = number(2);
  style(sql(), "{SqlList_SqlName}");
  style(my_sql(), "{SqlList_SqlName}");
  style(mail(), "{MailList_MailName}");
  answer_sql(5);
  answer_my_sql(5);
  answer_mail(5);
  EXPECT_EQ(show(sql()), "[12|34|5]");
  EXPECT_EQ(show(my_sql()), "[12|34|5]");
  EXPECT_EQ(show(mail()), "[12|34|5]");
}

TEST_F(PlanListsPage, FourPlansBreakOnceBecauseTheLastEndsTheList) {
  style(sql(), "{SqlList_SqlName}");
  parameters.NewLineNum = number(2);
  answer_sql(4);
  EXPECT_EQ(show(sql()), "[12|34]");
}

TEST_F(PlanListsPage, NewLineNumIsReadForAllPlansButTheLast) {
  style(sql(), "{SqlList_SqlName}");
  parameters.NewLineNum = text("two");
  answer_sql(1);
  EXPECT_EQ(show(sql()), "[1]");
  answer_sql(2);
  EXPECT_EQ(error_of([&] { show(sql()); }), 13);
}

TEST_F(PlanListsPage, AgentSeesItsOwnNameAndPrice) {
  style(mail(), "{MailList_MailName}:{Price};");
  parameters.Agent_User = text("green");
  page.db.answer(
      "Select [Id],[Size],[MailName],[Num],[Price] From [Rk_MailList] Where [freemail]=0 And "
      "[AgentS]=1 Order By [Id] Desc",
      {{"Id", "Size", "MailName", "Num", "Price"},
       {{number(4), number(1), text("Master"), number(1), number(10)},
        {number(5), number(1), text("Other"), number(1), number(11)}}});
  page.db.answer(plan_price_sql(PlanList::Mail, "green", "4"),
                 {{"AgentSetName", "Price"}, {{text("Own"), number(12)}}});
  page.db.answer(plan_price_sql(PlanList::Mail, "green", "5"), {{"AgentSetName", "Price"}, {}});
  EXPECT_EQ(show(mail()), "[Own:12;Other:11;]");
  EXPECT_EQ(page.log().size(), 8u) << "each lookup is closed before the next";
}

TEST_F(PlanListsPage, KeepsLosingPlansWithTheHeightInTheirItem) {
  style(sql(), "{SqlList_SqlName}({ListLineHeight})");
  style(my_sql(), "{SqlList_SqlName}({ListLineHeight})");
  style(mail(), "{MailList_MailName}({ListLineHeight})");
  answer_sql(2);
  answer_my_sql(2);
  answer_mail(2);
  EXPECT_EQ(show(sql()), "[1(30)2(30)]") << "the SQL Server list is put in first";
  EXPECT_EQ(show(my_sql()), "[{SqlList_SqlName}(30)]");
  EXPECT_EQ(show(mail()), "[{MailList_MailName}(30)]");
}

TEST_F(PlanListsPage, KeepsTheTwoSpellingsOfTheFreeFilter) {
  page.request.queries["serverid"] = "7";
  const auto sent = [&](const char* list_num) {
    parameters.ListNum = text(list_num);
    EXPECT_EQ(error_of([&] { show(my_sql()); }), errors::kSqlSyntax) << "no rows are scripted";
    return page.db.statements().back();
  };
  EXPECT_EQ(sent("0"),
            "Select [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where [freesql]=False "
            "And [ProClass]=7 Order By [Id] Desc");
  EXPECT_EQ(sent("9"),
            "Select Top 9 [Id],[DbName],[db_MaxSize],[Price] From [Rk_MySqlList] Where "
            "[freesql]=0 And [ProClass]=7 Order By [Id] Desc");
}

TEST_F(PlanListsPage, ClassOfTheRequestIsCleaned) {
  style(sql(), "{SqlList_SqlName}");
  page.request.queries["serverid"] = " '7' ";
  EXPECT_EQ(error_of([&] { show(sql()); }), errors::kSqlSyntax) << "no rows are scripted for it";
  EXPECT_NE(page.db.marked().back().find("[ProClass]=<<7>> Order"), std::string::npos);
}

TEST_F(PlanListsPage, KeepsLosingTheListOnANull) {
  style(sql(), "{SqlList_SqlName};");
  page.db.answer(kSqlCasesPlain, {{"Id", "DbName", "db_MaxSize", "lg_MaxSize", "Price"},
                                  {{number(1), text("a"), number(1), number(1), number(1)},
                                   {number(2), text("b"), Value::null(), number(1), number(1)},
                                   {number(3), text("c"), number(1), number(1), number(1)}}});
  EXPECT_EQ(show(sql()), "[c;]");
}

TEST_F(PlanListsPage, StyleWithoutMarkersShowsNothing) {
  style(sql(), "{SqlList_SqlName}");
  answer_sql(1);
  parameters.Style = text("none");
  EXPECT_EQ(show(sql()), "");
}

}  // namespace
}  // namespace rk::catalogue
