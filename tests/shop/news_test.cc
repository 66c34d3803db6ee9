#include "shop/news.h"

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

constexpr double kToday = 45000;  // 2023-03-15

Rows items(int count) {
  Rows rows{{"Id", "title", "Time"}, {}};
  for (int id = 1; id <= count; ++id) {
    rows.rows.push_back({number(id), text("t" + std::to_string(id)), Value::date(44000)});
  }
  return rows;
}

class News : public testing::Test {
 protected:
  std::string written(const NewsParameters& parameters) {
    getnews(page.context, clock, parameters);
    return page.response.body;
  }
  std::string list_of(const Value& title, const Value& length) {
    const NewsListParameters parameters{text("news"), number(5), text("*"), length,
                                        text("3"),    text("1"), text("")};
    page.db.answer(news_list_sql(parameters),
                   {{"title", "Id", "Time"}, {{title, number(1), Value::date(44000)}}});
    return Show_NewsList(page.context, parameters);
  }
  std::string news_page(int stored, std::string_view number_asked, std::string_view type = "") {
    page.request.queries["page"] = number_asked;
    page.request.queries["type"] = type;
    page.db.answer(news_page_sql(type, text("")).text(), items(stored));
    return Show_NewsPageList(page.context, clock, text(""));
  }

  FakePage page;
  tests::FixedClock clock{kToday + 0.5};
};

// --- getnews ------------------------------------------------------------------------------------

TEST_F(News, TheThreeKindsHaveTheirTexts) {
  const NewsParameters news{number(1), number(5), number(0), number(10), text("")};
  EXPECT_EQ(getnews_sql(news, "news"),
            "select top 5 * from Rk_news where type='news' And (AgentUser='' Or AgentUser Is Null) "
            "order by id desc");
  const NewsParameters agent{number(0), text("3"), number(0), number(10), text("abc")};
  EXPECT_EQ(getnews_sql(agent, "help"),
            "select top 3 * from Rk_news where type='help' And AgentUser='abc' order by id desc");
}

TEST_F(News, AnUnknownKindLooksForNoneAndItsLinkIsEmpty) {
  page.db.answer(
      "select top 5 * from Rk_news where type='' And (AgentUser='' Or AgentUser Is Null) order by "
      "id desc",
      items(0));
  EXPECT_EQ(written({number(2), number(5), number(1), number(10), text("")}),
            "<table width='100%' border='0' cellspacing='0' cellpadding='3'><tbody>"
            "<br><br><center>目前暂无信息！</center><tr><td><p align='right'><a href=''><img "
            "border='0' src='/images/more.gif' title=''></a></td></tr></tbody></table>");
}

TEST_F(News, ATitleIsCutPastItsLengthOnly) {
  const NewsParameters parameters{number(1), number(5), number(0), number(10), text("")};
  const auto line_of = [&](std::string_view title) {
    page.response.body.clear();
    page.db.answer(getnews_sql(parameters, "news"),
                   {{"Id", "title", "Time"}, {{number(1), text(title), Value::date(44000)}}});
    const std::string html = written(parameters);
    const std::size_t begin = html.find("'>", html.find("title='")) + 2;
    return html.substr(begin, html.find("</td>", begin) - begin);
  };
  EXPECT_EQ(line_of("0123456789"), "0123456789</a>");
  EXPECT_EQ(line_of("0123456789x"), "0123456789..</a>");
}

TEST_F(News, ALineShowsTimeAndWhatIsNew) {
  const NewsParameters parameters{number(0), number(5), number(1), number(10), text("")};
  page.db.answer(getnews_sql(parameters, "help"),
                 {{"Id", "title", "Time"},
                  {{number(2), text("a"), Value::date(kToday)},
                   {number(1), text("b"), Value::date(kToday + 0.25)}}});
  EXPECT_EQ(written(parameters),
            "<table width='100%' border='0' cellspacing='0' cellpadding='3'><tbody>"
            "<tr><td><font color='#ff6600'>·</font> <a href='/News/ShowNews.asp?id=2' "
            "title='a'>a</a> <font color='999999'>[2023-03-15]</font><img "
            "src=/images/i_new.gif border=0></td></tr>"
            "<tr><td><font color='#ff6600'>·</font> <a href='/News/ShowNews.asp?id=1' "
            "title='b'>b</a> <font color='999999'>[2023-03-15 06:00:00]</font></td></tr>"
            "<tr><td><p align='right'><a href='/News/news.asp?tp=help'><img border='0' "
            "src='/images/more.gif' title='更多帮助'></a></td></tr></tbody></table>");
}

TEST_F(News, TheConnectionIsReleasedByTheEndOfTheCall) {
  const NewsParameters parameters{number(1), number(5), number(0), number(10), text("")};
  page.db.answer(getnews_sql(parameters, "news"), items(1));
  written(parameters);
  EXPECT_EQ(page.db.log().back(), "close");
}

// --- Show_NewsList ------------------------------------------------------------------------------

TEST_F(News, KeepsDotsBehindATitleOfJustTheLength) {
  const std::string html = list_of(text("0123456789"), text("10"));
  EXPECT_EQ(html,
            "<table border=\"0\" width=\"100%\" id=\"Rk_News_Fun\" cellpadding=\"3\" "
            "style=\"border-collapse: collapse\">\r\n   <tr>\r\n       <td><span "
            "style=\"float:left;\">*<a href=\"/news/shownews.asp?id=1\" "
            "title=\"0123456789\">0123456789...</a> </span><span style=\"float:right;\">"
            "2020-06-18</span></td>\r\n   </tr>\r\n   <tr><td align=\"right\"><a "
            "href=\"/news/news.asp?type=news\">more</a></td></tr>\r\n</table>");
}

TEST_F(News, AShorterTitleIsShownWhole) {
  EXPECT_NE(list_of(text("012345678"), text("10")).find(">012345678</a> </span>"),
            std::string::npos);
}

TEST_F(News, ShowTimeZeroHidesTheTime) {
  NewsListParameters parameters{text("news"), number(5), text(""), number(10),
                                text("3"),    number(0), text("")};
  page.db.answer(news_list_sql(parameters), items(1));
  EXPECT_NE(Show_NewsList(page.context, parameters).find("float:right;\"></span>"),
            std::string::npos);
}

TEST_F(News, AnAgentsListIsWidenedByWhatIsForEveryone) {
  const NewsListParameters parameters{text("news"), number(5), text(""),   number(10),
                                      text("3"),    number(0), text("abc")};
  EXPECT_EQ(news_list_sql(parameters),
            "Select Top 5 [title],[Id],[Time] From [Rk_News] Where [Type]='news' And "
            "(AgentUser='abc' Or EveryOne=1) Order By [Id] Desc");
  EXPECT_EQ(news_page_sql("", text("abc")).text(),
            "select * From Rk_News Where AgentUser='abc' Or EveryOne=1 order by Id");
  EXPECT_EQ(news_page_sql("help", text("abc")).text(),
            "select * From Rk_News Where type='help' And (AgentUser='abc' Or EveryOne=1) order by "
            "Id");
}

// --- Show_NewsPageList --------------------------------------------------------------------------

TEST_F(News, TheNewsPagesTextsForTheMasterSite) {
  EXPECT_EQ(news_page_sql("", Value()).text(),
            "select * From Rk_News Where [AgentUser]='' Or [AgentUser] Is Null order by Id");
  const platform::SqlText sql = news_page_sql("help", Value());
  EXPECT_EQ(sql.text(),
            "select * From Rk_News where type='help' And ([AgentUser]='' Or [AgentUser] Is Null) "
            "order by Id");
  EXPECT_EQ(sql.outside().size(), 1u);
}

TEST_F(News, KeepsTheTableOpenWhereThereIsNothing) {
  EXPECT_EQ(news_page(0, ""),
            "<table width=\"98%\" border=0 cellpadding=0 cellspacing=0 bgcolor=#ffffff "
            "id=\"table19\">\r\n<tbody>\r\n=== 对不起，暂无记录 ===");
}

TEST_F(News, APageIsWalkedBackwardsFromItsNewest) {
  const std::string first = news_page(45, "");
  EXPECT_LT(first.find("id=45\""), first.find("id=26\""));
  EXPECT_EQ(first.find("id=25\""), std::string::npos);
  EXPECT_NE(first.find("<font color=\"#999999\">上一页</font>\r\n"), std::string::npos);
  EXPECT_NE(first.find("共 45 条记录　　第 1/3"), std::string::npos);
  EXPECT_NE(
      first.find("<a href=\"News.asp?page=2&type=\" style=\"color:000000\">\r\n下一页</a> \r\n"),
      std::string::npos);
}

TEST_F(News, TheLastPageHasNoNextLink) {
  const std::string last = news_page(45, "3", "help");
  EXPECT_NE(last.find("id=5\""), std::string::npos);
  EXPECT_NE(last.find("id=1\""), std::string::npos);
  EXPECT_EQ(last.find("id=6\""), std::string::npos);
  EXPECT_NE(
      last.find("<a href=\"News.asp?page=2&type=help\" style=\"color:000000\">上一页</a> \r\n"),
      std::string::npos);
  EXPECT_TRUE(
      last.ends_with("<font color=\"#999999\">下一页</font></td>\r\n</tr>\r\n</table>\r\n"));
}

TEST_F(News, APageBeyondTheLastRaises) {
  EXPECT_EQ(error_of([&] { news_page(45, "9"); }), 3001);
}

TEST_F(News, APageBelowOneLiesBehindTheNewestAndRaises) {
  EXPECT_EQ(error_of([&] { news_page(45, "0"); }), 3021);
  EXPECT_EQ(error_of([&] { news_page(45, "-1"); }), 3021);
}

TEST_F(News, APageOfNoItemsIsNotLookedAt) {
  for (const char* asked : {"2", "0", "x"}) {
    EXPECT_TRUE(news_page(0, asked).ends_with("<tbody>\r\n=== 对不起，暂无记录 ===")) << asked;
  }
}

TEST_F(News, ANullTitleIsAnEmptyTextEverywhere) {
  const Rows untitled{{"Id", "title", "Time"}, {{number(1), Value::null(), Value::date(44000)}}};
  const NewsParameters parameters{number(1), number(5), number(0), number(10), text("")};
  page.db.answer(getnews_sql(parameters, "news"), untitled);
  EXPECT_NE(written(parameters).find("id=1' title=''></a></td>"), std::string::npos);
  EXPECT_NE(list_of(Value::null(), text("10")).find("title=\"\"></a> </span>"), std::string::npos);
  page.db.answer(news_page_sql("", text("")).text(), untitled);
  EXPECT_NE(Show_NewsPageList(page.context, clock, text("")).find("id=1\"></a>　"),
            std::string::npos);
}

TEST_F(News, ANullTimeIsAnEmptyTextAndNoNewItem) {
  page.db.answer(news_page_sql("", text("")).text(),
                 {{"Id", "title", "Time"}, {{number(1), text("a"), Value::null()}}});
  const std::string html = Show_NewsPageList(page.context, clock, text(""));
  EXPECT_NE(html.find("Arial\">]</font> </td>"), std::string::npos);
}

TEST_F(News, APageThatIsNoNumberRaises) {
  EXPECT_EQ(error_of([&] { news_page(45, "x"); }), 13);
}

TEST_F(News, KeepsTheTagOfTheNewImageForThePageToFill) {
  page.db.answer(news_page_sql("", text("")).text(),
                 {{"Id", "title", "Time"}, {{number(1), text("a"), Value::date(kToday)}}});
  EXPECT_NE(Show_NewsPageList(page.context, clock, text(""))
                .find("<a href=\"ShowNews.asp?id=1\">a</a>　<font color=\"#999999\">[</font><font "
                      "color=\"#999999\" face=\"arial, helvetica, Arial\">2023-03-15]</font><img "
                      "src={templatePath}Images/i_new.gif border=0> </td>\r\n</tr>\r\n"),
            std::string::npos);
}

}  // namespace
}  // namespace rk::shop
