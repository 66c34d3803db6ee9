#include "site/messages.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::site {
namespace {

using tests::FakePage;
using tests::number;
using tests::text;

class Messages : public testing::Test {
 protected:
  // Whether the page ended.
  bool mess_box(const Value& message, const Value& address, const Value& end) {
    return ends([&] { MessBox(page.context, message, address, end); });
  }
  template <class Step>
  bool ends(Step step) {
    page.response.body.clear();
    try {
      step();
    } catch (const platform::PageEnd&) {
      return true;
    }
    return false;
  }
  const std::string& body() const { return page.response.body; }
  bool refused(const std::string& referer, const std::string& server) {
    page.request.server_variables["http_referer"] = referer;
    page.request.server_variables["server_name"] = server;
    return ends([&] { checkpost(page.context); });
  }

  FakePage page;
};

TEST_F(Messages, LocalShowsTheMessageAndGoesOn) {
  EXPECT_FALSE(mess_box(text("hello"), text("local"), number(0)));
  EXPECT_EQ(body(), "<script>alert('hello')</script>");
}

TEST_F(Messages, WithoutAnAddressTheVisitorGoesBack) {
  EXPECT_TRUE(mess_box(text("hello"), text(""), number(1)));
  EXPECT_EQ(body(), "<script>alert('hello');history.back();</script>");
  EXPECT_FALSE(mess_box(text("hello"), Value::null(), Value()));
  EXPECT_EQ(body(), "<script>alert('hello');history.back();</script>");
}

TEST_F(Messages, AddressIsWhereTheVisitorGoes) {
  EXPECT_TRUE(mess_box(text("it's"), text("/a.asp?b=1"), number(1)));
  EXPECT_EQ(body(), "<script>alert('it's');location.href='/a.asp?b=1'</script>");
  mess_box(text("x"), text("LOCAL"), number(0));
  EXPECT_EQ(body(), "<script>alert('x');location.href='LOCAL'</script>");
}

TEST_F(Messages, KeepsMessagesUnescaped) {
  mess_box(text("it's\r\n</script>"), text("local"), number(0));
  EXPECT_EQ(body(), "<script>alert('it's\r\n</script>')</script>");
}

TEST_F(Messages, OneEndsThePageWhateverItsType) {
  EXPECT_TRUE(mess_box(text("x"), text("local"), text("1")));
  EXPECT_TRUE(mess_box(text("x"), text("local"), Value::real(1)));
  EXPECT_FALSE(mess_box(text("x"), text("local"), text("yes")));
  EXPECT_FALSE(mess_box(text("x"), text("local"), Value()));
  EXPECT_FALSE(mess_box(text("x"), text("local"), Value::null()));
}

TEST_F(Messages, ShowMsgWritesTheTextAndEnds) {
  EXPECT_TRUE(ends([&] { ShowMsg(page.context, text("<b>over</b>")); }));
  EXPECT_EQ(body(), "<b>over</b>");
}

TEST_F(Messages, PostFromTheSiteItselfPasses) {
  EXPECT_FALSE(refused("http://shop.example/form.asp", "shop.example"));
  EXPECT_EQ(body(), "");
}

TEST_F(Messages, PostFromElsewhereIsRefused) {
  EXPECT_TRUE(refused("", "shop.example"));
  EXPECT_EQ(body(),
            "<br><br><br><br><br><table cellpadding=0 cellspacing=0 border='1' align='center' "
            "style='border-collapse:collapse; font-size:12px; width:400px'>   <tr >       <td "
            "width='100%' height='25' >       <p align='center'><font color='#FF0000'>系统信息提示"
            "</font></td>   </tr>   <tr>       <td width='100%' height='25' ><p align='center'>"
            "数据来源错误</td>   </tr></table>");
  EXPECT_TRUE(refused("http://other.example/", "shop.example"));
  EXPECT_TRUE(refused("http://Shop.Example/", "shop.example")) << "letter case counts";
}

TEST_F(Messages, RefererWithoutAHostIsRefused) {
  for (const char* referer : {"http://", "http:///", "http", "/form.asp"}) {
    EXPECT_TRUE(refused(referer, "shop.example")) << referer;
  }
  EXPECT_FALSE(refused("", "")) << "a server without a name is found everywhere";
}

TEST_F(Messages, KeepsComparingAtOnePlace) {
  EXPECT_TRUE(refused("https://shop.example/", "shop.example")) << "the 8th character is a slash";
  EXPECT_FALSE(refused("http://shop.example.evil/", "shop.example"));
  EXPECT_FALSE(refused("1234567shop.example", "shop.example"));
}

}  // namespace
}  // namespace rk::site
