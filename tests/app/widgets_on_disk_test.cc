// The strips and the slideshow over a real database: which rows each shows, in which order, and
// what bad input comes to.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/app/storefront_on_disk.h"
#include "value/conversions.h"
#include "widgets/slideshow.h"
#include "widgets/strips.h"

namespace rk::widgets {
namespace {

using tests::error_of;
using tests::number;
using tests::text;

constexpr std::int32_t kSyntax = -2147217900;
constexpr std::int32_t kNoValue = -2147217904;

// What stands behind each `begin` up to the next `end`, with commas between.
std::string all_between(const std::string& html, const std::string& begin, char end) {
  std::string found;
  for (std::size_t at = html.find(begin); at != std::string::npos; at = html.find(begin, at)) {
    at += begin.size();
    if (!found.empty()) found += ',';
    found += html.substr(at, html.find(end, at) - at);
  }
  return found;
}

class WidgetsOnDisk : public tests::StorefrontOnDisk {
 protected:
  WidgetsOnDisk() {
    run("Insert Into Rk_Links (linkName,linkUrl,linkType,linkPic,FtpUser,BePass,AgentUser) Values "
        "('first','u1',0,'p1',NULL,1,NULL),('second','u2',1,'p2','',1,''),"
        "('waiting','u3',0,'',NULL,0,NULL),('hosted','u4',0,'','ftp1',1,NULL),"
        "('green partner','u5',0,'',NULL,1,'green'),('green hosted','u6',0,'','ftp2',1,'green');"
        "Insert Into Rk_NCompany (City,Tel) Values ('A','1'),('B','2'),('C','3');"
        "Insert Into Rk_DownLoad (DownName,DownICO,DownUrl,AgentUser) Values "
        "('one','i1','d1',NULL),('two','i2','d2',''),('three','i3','d3','green');"
        "Insert Into Rk_Ads (picurl,link,adinfo,AgentUser) Values "
        "('a','la','A',NULL),('g','lg','G','green'),('b','lb','B',''),('c','lc','C',NULL);");
  }
  std::string links(const Value& most, const std::string& agent) {
    return Show_Links(
        context, {number(200), number(31), number(90), most, number(3), number(20), text(agent)});
  }
  std::string hosted(const std::string& agent) {
    return Show_FtpLinks(context, {number(200), number(31), number(90), number(9), number(3),
                                   number(20), text(agent)});
  }
  std::string companies(const Value& most) {
    return joined_text(Show_NCompany(context, most, number(80), number(300), Value())).string();
  }
  std::string downloads(const Value& most, const std::string& agent) {
    return Show_DownLoad(context, most, number(80), number(20), text(agent));
  }
  std::string show(const std::string& style, const std::string& agent) {
    return ShowFlash_Ad(context, {}, {text(style), number(1), number(2), number(3), text(agent)});
  }
};

TEST_F(WidgetsOnDisk, PartnersAreTheApprovedOnesOfTheSiteNewestFirst) {
  EXPECT_EQ(all_between(links(number(9), ""), "title=\"", '"'), "second,first");
  EXPECT_EQ(all_between(links(number(9), ""), "<img src=\"", '"'), "p2");
  EXPECT_EQ(all_between(links(number(1), ""), "title=\"", '"'), "second");
  EXPECT_EQ(all_between(links(number(9), "green"), "title=\"", '"'), "green partner");
  EXPECT_EQ(all_between(links(number(9), "nobody"), "title=\"", '"'), "");
}

TEST_F(WidgetsOnDisk, HostedSitesAreThoseWithAnAccount) {
  EXPECT_EQ(all_between(hosted(""), "title=\"", '"'), "hosted");
  EXPECT_EQ(all_between(hosted("green"), "title=\"", '"'), "green hosted");
}

TEST_F(WidgetsOnDisk, CompaniesAreTheNewestOrAll) {
  EXPECT_EQ(all_between(companies(number(2)), "?Id=", '"'), "3,2");
  EXPECT_EQ(all_between(companies(number(0)), "?Id=", '"'), "3,2,1");
  EXPECT_EQ(all_between(companies(number(-1)), "?Id=", '"'), "3,2,1");
}

TEST_F(WidgetsOnDisk, DownloadsAreThoseOfTheSite) {
  EXPECT_EQ(all_between(downloads(number(9), ""), "href=\"", '"'), "d2,d1");
  EXPECT_EQ(all_between(downloads(number(9), "green"), "href=\"", '"'), "d3");
}

TEST_F(WidgetsOnDisk, ANumberOfRowsThatIsNoneMakesTheStatementWrong) {
  for (const std::string agent : {"", "green"}) {
    EXPECT_EQ(error_of([&] { links(text(""), agent); }), kSyntax);
    EXPECT_EQ(error_of([&] { downloads(text(""), agent); }), kSyntax);
    EXPECT_NE(error_of([&] { links(text("many"), agent); }), 0);
    EXPECT_NE(error_of([&] { downloads(text("many"), agent); }), 0);
  }
}

TEST_F(WidgetsOnDisk, PicturesComeInTheOrderInWhichTheyWereStored) {
  EXPECT_EQ(all_between(show("", ""), "src = '", '\''), "a,b,c,la,lb,lc");
  EXPECT_EQ(all_between(show("1", ""), "pics='", '\'').substr(0, 5), "c|b|a");
  EXPECT_EQ(all_between(show("1", "green"), "texts='", '\'').substr(0, 1), "G");
  EXPECT_EQ(error_of([&] { show("1", "nobody"); }), 5);
}

TEST_F(WidgetsOnDisk, AnAgentThatEndsItsTextMakesTheStatementWrong) {
  EXPECT_NE(error_of([&] { show("", "x'y"); }), 0);
  EXPECT_EQ(error_of([&] { show("", "x' Or z='"); }), kNoValue);
}

}  // namespace
}  // namespace rk::widgets
