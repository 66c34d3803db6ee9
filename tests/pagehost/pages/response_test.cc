#include "pagehost/pages/response.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/fixed_clock.h"
#include "tests/support/toy_code_pages.h"
#include "value/script_error.h"

namespace rk::pagehost {
namespace {

// Keeps what was sent before the end.
class KeepingSink final : public AnswerSink {
 public:
  void wait_while(std::function<void()>) override {}
  void begin(const PageAnswer& answer) override {
    head = answer;
    ++begun;
  }
  void write(std::string_view bytes) override { body += bytes; }
  bool connected() override { return open; }

  PageAnswer head;
  int begun = 0;
  std::string body;
  bool open = true;
};

std::string header(const PageAnswer& answer, std::string_view name) {
  std::string out;
  for (const auto& [key, value] : answer.headers) {
    if (key == name) out += value + "|";
  }
  return out;
}

class ResponseTest : public ::testing::Test {
 protected:
  PageResponse response(int code_page = platform::kUtf8) {
    return PageResponse(&sink_, pages_, clock_, code_page);
  }
  KeepingSink sink_;
  tests::ToyCodePages pages_;
  tests::FixedClock clock_;
};

TEST_F(ResponseTest, SaysItsTypeAndCharsetAndThatItIsPrivate) {
  PageResponse page = response();
  page.write("hi");
  const PageAnswer answer = page.take();
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(header(answer, "Content-Type"), "text/html; charset=utf-8|");
  EXPECT_EQ(header(answer, "Cache-Control"), "private|");
  EXPECT_EQ(answer.body, "hi");
  EXPECT_FALSE(answer.streamed);
}

TEST_F(ResponseTest, TextGoesOutInTheCodePage) {
  PageResponse page = response(platform::kGb2312);
  page.write("\xE4\xBD\xA0");
  const PageAnswer answer = page.take();
  EXPECT_EQ(answer.body, "\xC4\xE3");
  EXPECT_EQ(header(answer, "Content-Type"), "text/html; charset=gb2312|");
}

TEST_F(ResponseTest, BytesGoOutAsTheyAre) {
  PageResponse page = response(platform::kGb2312);
  page.write("\xE4\xBD\xA0");
  page.write_bytes("\xE4\xBD\xA0");
  page.write("\xE5\xA5\xBD");
  EXPECT_EQ(page.take().body, "\xC4\xE3\xE4\xBD\xA0\xBA\xC3");
}

TEST_F(ResponseTest, AChangedCodePageRulesWhatComesAfter) {
  PageResponse page = response();
  page.write("\xE4\xBD\xA0");
  page.set_code_page(platform::kGb2312);
  page.write("\xE4\xBD\xA0");
  EXPECT_EQ(page.take().body, "\xE4\xBD\xA0\xC4\xE3");
}

TEST_F(ResponseTest, HalvesWrittenApartAreOneCharacter) {
  PageResponse page = response();
  page.write("\xED\xA0\xBD");
  page.write("\xED\xB8\x80!");
  EXPECT_EQ(page.take().body, "\xF0\x9F\x98\x80!");
}

TEST_F(ResponseTest, ALoneHalfIsNoCharacter) {
  PageResponse page = response();
  page.write("a\xED\xA0\xBD");
  page.write("b");
  EXPECT_EQ(page.take().body,
            "a\xEF\xBF\xBD"
            "b");
}

TEST_F(ResponseTest, ValuesAreWrittenAsTheirTexts) {
  PageResponse page = response();
  page.write(Value::null());
  page.write(Value::boolean(true));
  page.write(Value::real(0.5));
  EXPECT_EQ(page.take().body, "True0.5");
}

TEST_F(ResponseTest, FlushSendsHeadAndBodyAndTheRestFollows) {
  PageResponse page = response();
  page.set_status("404 Not here");
  page.write("a");
  page.flush();
  EXPECT_EQ(sink_.begun, 1);
  EXPECT_EQ(sink_.head.status, 404);
  EXPECT_EQ(sink_.head.reason, "Not here");
  EXPECT_EQ(sink_.body, "a");
  page.write("b");
  const PageAnswer rest = page.take();
  EXPECT_TRUE(rest.streamed);
  EXPECT_EQ(rest.body, "b");
}

TEST_F(ResponseTest, HeadersCannotChangeOnceTheyAreSent) {
  PageResponse page = response();
  page.flush();
  EXPECT_THROW(page.add_header("X", "1"), ScriptError);
  EXPECT_THROW(page.set_status("200 OK"), ScriptError);
  EXPECT_THROW(page.redirect("/x"), ScriptError);
}

TEST_F(ResponseTest, WithoutABufferEveryWriteIsSent) {
  PageResponse page = response();
  page.set_buffered(false);
  page.write("a");
  EXPECT_EQ(sink_.body, "a");
  EXPECT_THROW(page.clear(), ScriptError);
}

TEST_F(ResponseTest, ClearDropsWhatIsBuffered) {
  PageResponse page = response();
  page.write("a");
  page.clear();
  page.write("b");
  EXPECT_EQ(page.take().body, "b");
}

TEST_F(ResponseTest, RedirectEndsThePageWithAnAddress) {
  PageResponse page = response();
  page.write("lost");
  EXPECT_THROW(page.redirect("/a b.asp?x=<1>"), platform::PageEnd);
  const PageAnswer answer = page.take();
  EXPECT_EQ(answer.status, 302);
  EXPECT_EQ(header(answer, "Location"), "/a%20b.asp?x=<1>|");
  EXPECT_EQ(answer.body.find("lost"), std::string::npos);
}

TEST_F(ResponseTest, AHeaderHoldsNoLineEnds) {
  PageResponse page = response();
  page.add_header("X-A", "1\r\nSet-Cookie: evil=1");
  EXPECT_EQ(header(page.take(), "X-A"), "1  Set-Cookie: evil=1|");
  PageResponse other = response();
  EXPECT_THROW(other.add_header("X\r\nY", "1"), ScriptError);
}

TEST_F(ResponseTest, CookiesCarryTheirAttributes) {
  PageResponse page = response();
  page.cookie("a b").value = "1;2";
  ResponseCookie& user = page.cookie("user");
  user.keys = {{"name", "\xE4\xBD\xA0"}, {"id", "7"}};
  user.expires = 45000.0;
  user.domain = "shop.example";
  user.secure = true;
  EXPECT_EQ(header(page.take(), "Set-Cookie"),
            "a+b=1%3B2; path=/|user=name=%E4%BD%A0&id=7; expires=Wed, 15 Mar 2023 00:00:00 GMT; "
            "domain=shop.example; path=/; secure|");
}

TEST_F(ResponseTest, ATypeThatIsNoTextHasNoCharset) {
  PageResponse page = response();
  page.set_content_type("image/gif");
  EXPECT_EQ(header(page.take(), "Content-Type"), "image/gif|");
}

TEST_F(ResponseTest, ThePagesOwnCharsetStands) {
  PageResponse page = response();
  page.set_charset("big5");
  EXPECT_EQ(header(page.take(), "Content-Type"), "text/html; charset=big5|");
}

TEST_F(ResponseTest, ACharsetThatThePageNamedStandsWithAnyType) {
  PageResponse page = response();
  page.set_content_type("application/vnd.ms-excel");
  page.set_charset("gb2312");
  EXPECT_EQ(header(page.take(), "Content-Type"), "application/vnd.ms-excel; charset=gb2312|");
}

TEST_F(ResponseTest, AHeaderGoesOutInTheCodePage) {
  PageResponse page = response(platform::kGb2312);
  page.add_header("Content-Disposition", "attachment; filename=中.txt");
  EXPECT_EQ(header(page.take(), "Content-Disposition"), "attachment; filename=\xD6\xD0.txt|");
}

TEST_F(ResponseTest, EndlessOutputEndsThePage) {
  PageResponse page = response();
  const std::string much(std::size_t{1} << 20, 'x');
  bool ended = false;
  try {
    for (int i = 0; i < 1000; ++i) page.write(much);
  } catch (const platform::PageEnd& end) {
    ended = end.reason == platform::PageEnd::Reason::OutOfMemory;
  }
  EXPECT_TRUE(ended);
}

TEST_F(ResponseTest, AStatusWithoutANumberIsRefused) {
  PageResponse page = response();
  EXPECT_THROW(page.set_status("Not Found"), ScriptError);
  EXPECT_THROW(page.set_status("1"), ScriptError);
}

}  // namespace
}  // namespace rk::pagehost
