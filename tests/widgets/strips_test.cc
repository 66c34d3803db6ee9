#include "widgets/strips.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::widgets {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::Rows;
using tests::text;

class Strips : public testing::Test {
 protected:
  void links(std::vector<std::vector<Value>> rows) {
    page.db.answer(links_sql(parameters),
                   {{"linkName", "linkUrl", "linkType", "linkPic"}, std::move(rows)});
  }

  FakePage page;
  LinkParameters parameters{number(200), text("31"), number(90), number(5),
                            number(3),   text("4"),  text("")};
};

constexpr char kLinksStart[] =
    "<Style>#fl_CSS1 li{text-align:center;float:left;width:90px;height:31px;}#fl_CSS1 "
    "ul{margin:0px;}#fl_CSS1{width:200px;}#fl_CSS1 img{margin-right:2px;}</Style><div "
    "id=\"fl_CSS1\"><ul>";
constexpr char kLinksEnd[] =
    "</ul></div><script>new Marquee(\"fl_CSS1\",0,31,200,30,3,0,0)</script>";

TEST_F(Strips, NoLinksLeaveStyleListAndScroller) {
  links({});
  EXPECT_EQ(Show_Links(page.context, parameters), std::string(kLinksStart) + kLinksEnd);
}

TEST_F(Strips, ANameOfJustTheLengthIsShownWhole) {
  links({{text("abcd"), text("u1"), Value::boolean(false), Value::null()},
         {text("abcde"), text("u2"), Value::null(), Value::null()}});
  EXPECT_EQ(Show_Links(page.context, parameters),
            kLinksStart +
                std::string("<li><a href=\"u1\" target=\"_blank\" title=\"abcd\">abcd</a></li>"
                            "<li><a href=\"u2\" target=\"_blank\" "
                            "title=\"abcde\">abcd...</a></li>") +
                kLinksEnd);
}

TEST_F(Strips, APictureLinkShowsItsPicture) {
  links({{text("a"), text("u"), Value::boolean(true), text("p.gif")}});
  EXPECT_EQ(Show_Links(page.context, parameters),
            kLinksStart +
                std::string("<li><a href=\"u\" target=\"_blank\" title=\"a\"><img src=\"p.gif\" "
                            "border=\"0\" width=\"88\" height=\"31\"></a></li>") +
                kLinksEnd);
}

TEST_F(Strips, AHeightThatIsNullLeavesBothNumbersOut) {
  parameters.linkHeight = Value::null();
  links({});
  EXPECT_TRUE(
      Show_Links(page.context, parameters).ends_with("(\"fl_CSS1\",0,,200,,3,0,0)</script>"));
}

TEST_F(Strips, AHeightThatIsNoNumberRaises) {
  parameters.linkHeight = text("x");
  links({});
  EXPECT_EQ(error_of([&] { Show_Links(page.context, parameters); }), 13);
}

TEST_F(Strips, HostedSitesAreTextLinks) {
  page.db.answer(ftp_links_sql(parameters),
                 {{"linkName", "linkUrl"}, {{text("abcde"), text("u")}}});
  EXPECT_EQ(Show_FtpLinks(page.context, parameters),
            "<Style>#fl_CSS li{text-align:center;float:left;width:90px;}#fl_CSS "
            "ul{margin:0px;}#fl_CSS{width:200px;}</Style><div id=\"fl_CSS\"><ul><li><a href=\"u\" "
            "target=\"_blank\" title=\"abcde\">abcd...</a></li></ul></div><script>new "
            "Marquee(\"fl_CSS\",0,31,200,30,3,0,0)</script>");
}

TEST_F(Strips, TheTextsOfTheLinkStrips) {
  EXPECT_EQ(links_sql(parameters),
            "Select Top 5 [linkName],[linkUrl],[linkType],[linkPic] From [Rk_Links] Where "
            "([FtpUser]='' Or [FtpUser] Is Null) And ([AgentUser]='' Or [AgentUser] Is Null) And "
            "[BePass]=1 Order By [Id] Desc");
  EXPECT_EQ(ftp_links_sql(parameters),
            "Select Top 5 [linkName],[linkUrl] From [Rk_Links] Where [FtpUser]<>'' And [BePass]=1 "
            "And ([AgentUser]='' Or [AgentUser] Is Null) Order By [Id] Desc");
  parameters.Agent_User = text("abc");
  EXPECT_EQ(links_sql(parameters),
            "Select Top 5 [linkName],[linkUrl],[linkType],[linkPic] From [Rk_Links] Where "
            "([FtpUser]='' Or [FtpUser] Is Null) And ([AgentUser]='abc') And [BePass]=1 Order By "
            "[Id] Desc");
  EXPECT_EQ(ftp_links_sql(parameters),
            "Select Top 5 [linkName],[linkUrl] From [Rk_Links] Where [FtpUser]<>'' And [BePass]=1 "
            "And [AgentUser]='abc' Order By [Id] Desc");
}

TEST_F(Strips, CompaniesBelongToTheMasterSite) {
  EXPECT_TRUE(Show_NCompany(page.context, number(0), number(1), number(1), text("abc")).is_empty());
  EXPECT_TRUE(page.db.log().empty());
}

TEST_F(Strips, AllCompaniesAreShownForZero) {
  EXPECT_EQ(companies_sql(number(0)), "Select  * From [Rk_NCompany] Order By [Id] Desc");
  EXPECT_EQ(companies_sql(text("3")), "Select Top 3 * From [Rk_NCompany] Order By [Id] Desc");
  page.db.answer(companies_sql(number(0)),
                 {{"Id", "City", "Tel"}, {{number(1), text("北京"), Value::null()}}});
  EXPECT_EQ(Show_NCompany(page.context, number(0), number(80), number(300), text("")).as_view(),
            "<style>.NC_CSS li{margin-top:5px;margin-bottom:5px;float:left;width:80px;text-align:"
            "center;}.NC_CSS{margin:0px;}</style><div style=\"margin:auto; border-width: "
            "1px;border-style: solid;border-color: #1559AB;width:300px;padding:5px;\"><ul "
            "class=\"NC_CSS\"><li><a href=\"/NComPany?Id=1\">&#9742;北京：</a></li><li><a "
            "href=\"/links/?id=2\">more</a></li></ul></div>");
}

TEST_F(Strips, NoCompaniesGiveEmptyNotTheFrame) {
  page.db.answer(companies_sql(number(0)), {{"Id", "City", "Tel"}, {}});
  EXPECT_TRUE(Show_NCompany(page.context, number(0), number(1), number(1), text("")).is_empty());
}

TEST_F(Strips, DownloadsShowIconAndShortenedName) {
  EXPECT_EQ(downloads_sql(number(2), text("abc")),
            "Select Top 2 * From [Rk_DownLoad] Where [AgentUser]='abc' Order By [Id] Desc");
  const std::string sql = downloads_sql(number(2), text(""));
  EXPECT_EQ(sql,
            "Select Top 2 * From [Rk_DownLoad] Where [AgentUser]='' Or [AgentUser] Is Null Order "
            "By [Id] Desc");
  page.db.answer(
      sql, {{"DownName", "DownICO", "DownUrl"}, {{text("abcdef"), text("i.gif"), text("/d.zip")}}});
  EXPECT_EQ(Show_DownLoad(page.context, number(2), number(120), text("3"), text("")),
            "<Style>.DL_CSS "
            "li{width:120px;float:left;}.DL_CSS{margin:0px;padding-left:10px;}</Style><div><ul "
            "class=\"DL_CSS\"><li><span style=\"float:left;\"><img width=\"19\" height=\"19\" "
            "src=\"i.gif\"></span><span style=\"float:left;\"><a title=\"abcdef\" href=\"/d.zip\" "
            "target=\"_blank\">abc...</a></span></li></ul></div>");
}

TEST_F(Strips, ALengthThatIsNoNumberRaises) {
  parameters.sLen = text("x");
  links({{text("a"), text("u"), Value::boolean(false), Value::null()}});
  EXPECT_EQ(error_of([&] { Show_Links(page.context, parameters); }), 13);
}

TEST_F(Strips, ALengthCountsForPictureLinksToo) {
  links({{text("a"), text("u"), Value::boolean(true), text("p")}});
  for (const auto& [length, number] :
       {std::pair{text("x"), 13}, {Value::null(), 94}, {text("-1"), 5}}) {
    parameters.sLen = length;
    EXPECT_EQ(error_of([&] { Show_Links(page.context, parameters); }), number);
  }
}

}  // namespace
}  // namespace rk::widgets
