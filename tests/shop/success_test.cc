#include "shop/success.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::shop {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::Rows;
using tests::text;

Rows cases(int count) {
  Rows rows{{"Id", "SiteName", "SiteUrl", "Info", "PicUrl"}, {}};
  for (int id = 1; id <= count; ++id) {
    const std::string n = std::to_string(id);
    rows.rows.push_back({number(id), text(n), text("u" + n), text("i"), text("p")});
  }
  return rows;
}

class Success : public testing::Test {
 protected:
  Success() {
    page.put_template("User-Success-Info.html",
                      "<!--Style1--><!--Loop-->{SiteName}<!--End Loop-->|{PageSelect}<!--End "
                      "Style1-->");
  }
  std::string links(const Value& list) {
    page.db.answer("Select [succlass] From [System]", {{"succlass"}, {{list}}});
    const Value html = Show_SuccessItem(page.context, number(80), number(20), text(""));
    return html.is_empty() ? "(empty)" : std::string(html.as_view());
  }
  std::string list_of(std::string_view name) {
    const SuccessListParameters list{number(3),  text("6"), number(80),
                                     number(20), text("*"), text("")};
    page.db.answer(success_list_sql(list),
                   {{"Id", "SiteName", "SiteUrl"}, {{number(1), text(name), text("http://a")}}});
    return Show_SuccessList(page.context, list);
  }
  // The shown cases, without markers and navigation.
  std::string shown(int stored, std::string_view number_asked) {
    const std::string html = whole(stored, number_asked);
    const std::size_t begin = std::string_view("<!--Loop-->").size();
    return html.substr(begin, html.find("<!--End") - begin);
  }
  std::string whole(int stored, std::string_view number_asked) {
    page.request.queries["page"] = number_asked;
    page.db.answer(success_page_sql(parameters, page.request.queries["type"]).text(),
                   cases(stored));
    return Show_SuccessPageList(page.context, parameters).string();
  }

  FakePage page;
  SuccessPageParameters parameters{text("1"), number(4),  text("3"),
                                   text("|"), text("Id"), text("")};
};

TEST_F(Success, AnEmptyPieceOfTheListIsSkipped) {
  const auto link = [](const std::string& name) {
    return "<li style=\"width:80px;height:20px;float:left;\"><a href=\"success.asp?Type=" + name +
           "\">" + name + "</a></li>";
  };
  EXPECT_EQ(links(text("a|b||c")), link("a") + link("b") + link("c"));
  EXPECT_EQ(page.db.log().back(), "close");
}

TEST_F(Success, AnEmptyListGivesEmptyAndANullOneRaises) {
  EXPECT_EQ(links(text("")), "(empty)");
  EXPECT_EQ(error_of([&] { links(Value::null()); }), 94);
}

TEST_F(Success, AMissingRowRaises) {
  page.db.answer("Select [succlass] From [Rk_AgentSet] Where [AgentUser]='abc'",
                 {{"succlass"}, {}});
  EXPECT_EQ(error_of([&] { Show_SuccessItem(page.context, number(1), number(1), text("abc")); }),
            3021);
}

TEST_F(Success, ALongNameIsCutAndItsTitleKeepsTheWhole) {
  EXPECT_EQ(list_of("0123456789abc"),
            "<li style=\"width:80px;height:20px;float:left;\">*<a href=\"http://a\" "
            "target=\"_blank\" title=\"0123456789abc\">012345...</a></li>");
  EXPECT_NE(list_of("012345").find(">012345</a>"), std::string::npos);
}

TEST_F(Success, TheShortListsTexts) {
  SuccessListParameters list{number(3), number(6), number(1), number(1), text(""), text("")};
  EXPECT_EQ(success_list_sql(list),
            "Select Top 3 [Id],[SiteName],[SiteUrl] From [Rk_Success] Where [AgentUser]='' Or "
            "[AgentUser] Is Null Order By [Id] Desc");
  list.Agent_User = text("abc");
  EXPECT_EQ(success_list_sql(list),
            "Select Top 3 [Id],[SiteName],[SiteUrl] From [Rk_Success] Where [AgentUser]='abc' "
            "Order By [Id] Desc");
}

TEST_F(Success, ThePagesTexts) {
  EXPECT_EQ(success_page_sql(parameters, "").text(),
            "Select * From [Rk_Success] Where [AgentUser]='' Or [AgentUser] Is Null Order By [Id] "
            "Desc");
  EXPECT_EQ(success_page_sql(parameters, "a").text(),
            "Select * From [Rk_Success] Where [succlass] like'%a%' And ([AgentUser]='' Or "
            "[AgentUser] Is Null) Order By [Id] Desc");
  parameters.Agent_User = text("abc");
  EXPECT_EQ(success_page_sql(parameters, "").text(),
            "Select * From [Rk_Success] Where [AgentUser]='abc' Order By [Id] Desc");
  EXPECT_EQ(success_page_sql(parameters, "a").text(),
            "Select * From [Rk_Success] Where [succlass] like'%a%' And [AgentUser]='abc' Order By "
            "[Id] Desc");
  EXPECT_EQ(success_page_sql(parameters, "a").outside().size(), 1u);
}

TEST_F(Success, ARowBreaksBehindItsCasesButNotBehindTheLast) {
  EXPECT_EQ(shown(9, ""), "123|4");
  EXPECT_EQ(shown(3, ""), "123");
  EXPECT_EQ(shown(7, "2"), "567");
}

TEST_F(Success, KeepsTheNumberOfAPageBeyondTheLast) {
  EXPECT_EQ(shown(9, "9"), "9");
  EXPECT_NE(whole(9, "9").find("共3页 当前第9页"), std::string::npos);
}

TEST_F(Success, KeepsClosingAFontThatWasNotOpened) {
  const std::string html = whole(9, "");
  EXPECT_NE(html.find("</a> </font><select"), std::string::npos);
  EXPECT_EQ(html.find("<font"), std::string::npos);
}

TEST_F(Success, KeepsTheCategoryOutOfTheListOfPages) {
  page.request.queries["type"] = "a";
  const std::string html = whole(9, "");
  const std::string list = html.substr(html.find("<select"));
  EXPECT_NE(list.find("success.asp?Page=2\""), std::string::npos);
  EXPECT_EQ(list.find("Type"), std::string::npos);
}

TEST_F(Success, APageThatIsNotAboveOneShowsTheFirst) {
  for (const char* asked : {"0", "-3", "1", "0.5"}) {
    EXPECT_EQ(shown(9, asked), "123|4") << asked;
    EXPECT_NE(whole(9, asked).find("当前第1页"), std::string::npos) << asked;
  }
}

TEST_F(Success, APageBeyondTheLastOfNoCasesRaises) {
  EXPECT_EQ(shown(0, ""), "");
  EXPECT_EQ(shown(0, "0"), "");
  EXPECT_EQ(error_of([&] { whole(0, "2"); }), 3021);
}

TEST_F(Success, ANullNameLosesTheCasesUpToIt) {
  Rows rows = cases(3);
  rows.rows[1][1] = Value::null();
  page.db.answer(success_page_sql(parameters, "").text(), rows);
  const std::string html = Show_SuccessPageList(page.context, parameters).string();
  EXPECT_TRUE(html.starts_with("<!--Loop-->3<!--End Loop-->")) << html;
}

TEST_F(Success, ANullNameOfTheShortListIsAnEmptyText) {
  const SuccessListParameters list{number(3),  text("6"), number(80),
                                   number(20), text("*"), text("")};
  page.db.answer(success_list_sql(list),
                 {{"Id", "SiteName", "SiteUrl"}, {{number(1), Value::null(), text("http://a")}}});
  EXPECT_NE(Show_SuccessList(page.context, list).find("title=\"\"></a></li>"), std::string::npos);
}

TEST_F(Success, AMissingRowOfTheMasterRaises) {
  page.db.answer("Select [succlass] From [System]", {{"succlass"}, {}});
  EXPECT_EQ(error_of([&] { Show_SuccessItem(page.context, number(1), number(1), text("")); }),
            3021);
}

TEST_F(Success, TheNavigationOfTheFirstPage) {
  page.request.queries["type"] = "a";
  const std::string html = whole(9, "0");
  EXPECT_EQ(html.substr(html.find('|') + 1, std::string::npos),
            "4<!--End Loop-->|<p align=\"center\"> 共3页 当前第1页 <a "
            "href=\"success.asp?page=1&Type=a\">首页</a>上一页<a "
            "href=success.asp?page=2&Type=a>下一页</a><a href=success.asp?page=3&Type=a>尾页</a> "
            "</font><select name=\"page\" class=\"bottom\" onchange=location.href=this.value>"
            "<option value=\"success.asp?Page=1\" selected>1</option>"
            "<option value=\"success.asp?Page=2\">2</option>"
            "<option value=\"success.asp?Page=3\">3</option></select></p>");
}

TEST_F(Success, TheLastPagesNextWordIsPlain) {
  const std::string html = whole(9, "3");
  EXPECT_NE(html.find("<a href=success.asp?page=2&Type=>上一页</a>下一页<a "), std::string::npos);
}

TEST_F(Success, APageThatIsNoNumberRaises) {
  EXPECT_EQ(error_of([&] { whole(9, "x"); }), 13);
}

}  // namespace
}  // namespace rk::shop
