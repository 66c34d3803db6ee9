#include "pagehost/http/answer_head.h"

#include <gtest/gtest.h>

namespace rk::http {
namespace {

TEST(AnswerHead, HoldsStatusFieldsAndFraming) {
  pagehost::PageAnswer answer;
  answer.headers = {{"Content-Type", "text/html"}, {"Set-Cookie", "a=1"}, {"Set-Cookie", "b=2"}};
  HeadFraming framing;
  framing.length = 5;
  framing.date = "today";
  EXPECT_EQ(answer_head(answer, framing),
            "HTTP/1.1 200 OK\r\nDate: today\r\nContent-Type: text/html\r\nSet-Cookie: a=1\r\n"
            "Set-Cookie: b=2\r\nContent-Length: 5\r\n\r\n");
  framing = HeadFraming();
  framing.chunked = true;
  framing.keep_alive = false;
  EXPECT_EQ(answer_head(pagehost::PageAnswer(), framing),
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\nConnection: close\r\n\r\n");
}

TEST(AnswerHead, NoValueBreaksOutOfItsLine) {
  pagehost::PageAnswer answer;
  answer.reason = "OK\r\nX: 1";
  answer.headers = {{"Location", "/a\r\nSet-Cookie: b\r\n\r\n<html>"}, {"A\nB", "c"}};
  EXPECT_EQ(answer_head(answer, {}),
            "HTTP/1.1 200 OKX: 1\r\nLocation: /aSet-Cookie: b<html>\r\nAB: c\r\n\r\n");
}

TEST(AnswerHead, TheFrontsOwnFieldsAreNotThePages) {
  pagehost::PageAnswer answer;
  answer.headers = {{"content-length", "1"}, {"Transfer-Encoding", "x"}, {"Connection", "y"},
                    {"Date", "z"},           {"Keep-Alive", "1"},        {"X", "1"}};
  EXPECT_EQ(answer_head(answer, {}), "HTTP/1.1 200 OK\r\nX: 1\r\n\r\n");
}

TEST(AnswerHead, SomeStatusesHaveNoBody) {
  EXPECT_TRUE(has_body(200));
  EXPECT_TRUE(has_body(404));
  EXPECT_FALSE(has_body(204));
  EXPECT_FALSE(has_body(304));
}

TEST(AnswerHead, ARefusalTellsItsStatusAndNoMore) {
  const pagehost::PageAnswer answer = plain_answer(414);
  EXPECT_EQ(answer.status, 414);
  EXPECT_EQ(answer.body,
            "<!doctype html>\n<title>414 URI Too Long</title>\n<h1>414 URI Too Long</h1>\n");
  EXPECT_EQ(reason_phrase(404), "Not Found");
}

}  // namespace
}  // namespace rk::http
