#include "widgets/slideshow.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::widgets {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;
using tests::text;

class Slideshow : public testing::Test {
 protected:
  void pictures(std::vector<std::vector<Value>> rows) {
    page.db.answer(pictures_sql(parameters.Agent_User),
                   {{"picurl", "link", "adinfo"}, std::move(rows)});
  }
  void three_pictures() {
    pictures({{text("a.jpg"), text("/a"), text("A")},
              {text("b.jpg"), text("/b"), text("B")},
              {text("c.jpg"), text("/c"), text("C")}});
  }
  std::string shown(const Value& style) {
    parameters.Style = style;
    return ShowFlash_Ad(page.context, player, parameters);
  }
  bool shows(const Value& style, std::string_view line) {
    return shown(style).find(std::string(line) + "\r\n") != std::string::npos;
  }

  FakePage page;
  PlayerAddresses player{"http://player.example/player.cab", "http://player.example/player"};
  SlideshowParameters parameters{Value(), number(500), text("200"), number(20), Value()};
};

TEST_F(Slideshow, ThePlayerIsFedFromTheLastPictureToTheFirst) {
  three_pictures();
  EXPECT_TRUE(shows(text("1"), " var pics='c.jpg|b.jpg|a.jpg'"));
  EXPECT_TRUE(shows(text("1"), " var links='/c|/b|/a'"));
  EXPECT_TRUE(shows(text("1"), " var texts='C|B|A'   "));
}

TEST_F(Slideshow, ThePlayerHasItsSizesAndAddresses) {
  three_pictures();
  const std::string html = shown(text("1"));
  EXPECT_NE(html.find(" var focus_width=500\r\n var focus_height=200\r\n var text_height=20\r\n "
                      "var swf_height = focus_height+text_height\r\n \r\n"),
            std::string::npos);
  EXPECT_NE(html.find("codebase=\"http://player.example/player.cab#version=6,0,0,0\" width="),
            std::string::npos);
  EXPECT_NE(html.find("pluginspage=\"http://player.example/player\" />');     \r\n"),
            std::string::npos);
  EXPECT_TRUE(html.starts_with("<script language=\"JavaScript\">\r\n<!--\r\nfunction "));
  EXPECT_TRUE(html.ends_with(" document.write('</object>');\r\n \r\n //-->\r\n</script>\r\n"));
}

TEST_F(Slideshow, ThreePicturesAreCountedAndNumbered) {
  three_pictures();
  EXPECT_NE(
      shown(text("")).find(
          " var counts = 3;\r\n //大图\r\n   img1 = new Image();\r\n   img1.src = 'a.jpg';\r\n   "
          "img2 = new Image();\r\n   img2.src = 'b.jpg';\r\n   img3 = new Image();\r\n   img3.src "
          "= 'c.jpg';\r\n var smallImg = new Array();\r\n //小图\r\n smallImg[0] = "
          "'/images/index_adb1.gif';\r\n smallImg[1] = '/images/index_adb2.gif';\r\n smallImg[2] = "
          "'/images/index_adb3.gif';\r\n //链接地址\r\n url1 = new Image();\r\n url1.src = "
          "'/a';\r\n url2 = new Image();\r\n url2.src = '/b';\r\n url3 = new Image();\r\n url3.src "
          "= '/c';\r\n //alt值\r\n   alt1 = new Image();\r\n   alt1.alt = 'A';\r\n   alt2 = new "
          "Image();\r\n   alt2.alt = 'B';\r\n   alt3 = new Image();\r\n   alt3.alt = 'C';\r\n "
          "//\r\n var nn = 1;\r\n"),
      std::string::npos);
}

TEST_F(Slideshow, TheScriptHasThePicturesSize) {
  three_pictures();
  EXPECT_TRUE(shows(text(""), ".picshow_main {position: relative; width: 500px; height: 200px}"));
  EXPECT_TRUE(shows(text(""),
                    "     document.write('<div><a id=\"url\"><img width=\"500\" height=\"200\" "
                    "border=\"0\" id=\"pic\" class=\"imgbig\" /></a></div>');"));
}

TEST_F(Slideshow, NoPicturesLeaveTheScriptWithEmptyLists) {
  pictures({});
  EXPECT_NE(shown(text("")).find(" var counts = 0;\r\n //大图\r\n var smallImg = new Array();\r\n "
                                 "//小图\r\n //链接地址\r\n //alt值\r\n //\r\n var nn = 1;\r\n"),
            std::string::npos);
}

TEST_F(Slideshow, NoPicturesRaiseForThePlayer) {
  pictures({});
  EXPECT_EQ(error_of([&] { shown(text("1")); }), 5);
  EXPECT_EQ(page.db.log().back(), "close");
}

TEST_F(Slideshow, AnyOtherStyleIsTheScript) {
  three_pictures();
  const std::string script = shown(text(""));
  EXPECT_EQ(script.substr(0, 26), "<style type=\"text/css\"> \r\n");
  for (const Value& style : {text("2"), text("1 "), Value(), Value::null()}) {
    EXPECT_EQ(shown(style), script);
  }
  EXPECT_NE(shown(number(1)), script);
}

TEST_F(Slideshow, KeepsQuotesAsTheyAre) {
  pictures({{text("a'.jpg"), text("/a?<"), text("\"A\"")}});
  EXPECT_TRUE(shows(text("1"), " var pics='a'.jpg'"));
  EXPECT_TRUE(shows(text(""), "   img1.src = 'a'.jpg';"));
  EXPECT_TRUE(shows(text(""), " url1.src = '/a?<';"));
  EXPECT_TRUE(shows(text(""), "   alt1.alt = '\"A\"';"));
}

TEST_F(Slideshow, KeepsTheSmallPicturesWhateverTheRowShows) {
  pictures({{text("other.png"), text("/a"), text("A")}});
  EXPECT_TRUE(shows(text(""), " smallImg[0] = '/images/index_adb1.gif';"));
}

TEST_F(Slideshow, ANullOfARowIsAnEmptyText) {
  pictures({{Value::null(), Value::null(), Value::null()}, {text("b"), text("/b"), text("B")}});
  EXPECT_TRUE(shows(text("1"), " var pics='b|'"));
  EXPECT_TRUE(shows(text(""), "   img1.src = '';"));
}

TEST_F(Slideshow, ThePicturesAreThoseOfTheSite) {
  EXPECT_EQ(pictures_sql(text("")),
            "Select * From Rk_Ads Where [AgentUser]='' Or [AgentUser] Is Null");
  EXPECT_EQ(pictures_sql(text("abc")), "Select * From Rk_Ads Where [AgentUser]='abc'");
  three_pictures();
  shown(text(""));
  EXPECT_EQ(page.db.log(), (std::vector<std::string>{"open Data Source=shop.db",
                                                     "execute " + pictures_sql(Value()),
                                                     "close recordset", "close"}));
}

}  // namespace
}  // namespace rk::widgets
