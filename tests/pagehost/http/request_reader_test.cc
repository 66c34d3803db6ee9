#include "pagehost/http/request_reader.h"

#include <gtest/gtest.h>

namespace rk::http {
namespace {

// What a connection's bytes are read as, fed in pieces of so many: each request as
// "METHOD TARGET [BODY]", a refusal as its status, "..." where more is awaited.
std::string read(const std::string& bytes, std::size_t piece, std::uint64_t max_body = 64) {
  RequestReader reader(HeaderLimits{}, max_body);
  std::string seen;
  for (std::size_t at = 0; at < bytes.size(); at += piece) {
    reader.append(std::string_view(bytes).substr(at, piece));
    RequestReader::State state = reader.proceed();
    while (state == RequestReader::State::Complete) {
      const ReadRequest& request = reader.request();
      seen += request.page.method + " " + request.target + " [" + request.page.body + "] ";
      reader.restart();
      state = reader.proceed();
    }
    if (state == RequestReader::State::Refused) {
      return seen + std::to_string(reader.refused_status());
    }
  }
  return seen + (reader.state() == RequestReader::State::Idle ? "" : "...");
}

struct Row {
  const char* bytes;
  const char* seen;
};

const Row kRows[] = {
    {"GET /a HTTP/1.1\r\nHost: h\r\n\r\n", "GET /a [] "},
    {"GET /a HTTP/1.1\r\nHost: h\r\n\r\nGET /b HTTP/1.1\r\nHost: h\r\n\r\n",
     "GET /a [] GET /b [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 5\r\n\r\nhelloGET /b HTTP/1.1\r\nHost: "
     "h\r\n\r\n",
     "POST /a [hello] GET /b [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 0\r\n\r\n", "POST /a [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\n\r\n", "POST /a [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 5\r\n\r\nhell", "..."},
    {"POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 65\r\n\r\n", "413"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n1;x=y\r\n!\r\n"
     "0\r\n\r\nGET /b HTTP/1.1\r\nHost: h\r\n\r\n",
     "POST /a [hello!] GET /b [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nHost: evil\r\n\r\n",
     "POST /a [] "},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n5\nhello\r\n", "400"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhelloX\r\n0\r\n\r\n",
     "400"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n-1\r\n", "400"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\nfffffffffffffffff\r\n",
     "400"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n41\r\n", "413"},
    {"POST /a HTTP/1.1\r\nHost: h\r\nExpect: tea\r\nContent-Length: 1\r\n\r\nx", "417"},
    {"GET /a HTTP/1.1\r\nHost: h\r\nContent-Length: 1\r\nContent-Length: 1\r\n\r\nx", "400"},
    {"GET /a HTTP/1.1\r\nHost: h\r\n\r\nGARBAGE\r\n\r\n", "GET /a [] 400"},
};

TEST(RequestReader, ReadsTheSameHoweverTheBytesAreCut) {
  for (const Row& row : kRows) {
    const std::string bytes = row.bytes;
    for (std::size_t piece = 1; piece <= bytes.size(); ++piece) {
      ASSERT_EQ(read(bytes, piece), row.seen) << "by " << piece << ":\n" << row.bytes;
    }
  }
}

TEST(RequestReader, HeadersComeInOrderAndWithoutTrailers) {
  RequestReader reader(HeaderLimits{}, 64);
  reader.append(
      "POST /a?b HTTP/1.0\r\nHost: h\r\nX-B: 2\r\nx-a: 1\r\nX-B: 3\r\nContent-Length: 1\r\n\r\nz");
  ASSERT_EQ(reader.proceed(), RequestReader::State::Complete);
  const ReadRequest& request = reader.request();
  EXPECT_EQ(request.line, "POST /a?b HTTP/1.0");
  EXPECT_TRUE(request.old_version);
  EXPECT_FALSE(request.keep_alive);
  const pagehost::Headers expected{
      {"Host", "h"}, {"X-B", "2"}, {"x-a", "1"}, {"X-B", "3"}, {"Content-Length", "1"}};
  EXPECT_EQ(request.page.headers, expected);
  reader.restart();
  reader.append(
      "POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n0\r\nX-C: 4\r\n\r\n");
  ASSERT_EQ(reader.proceed(), RequestReader::State::Complete);
  EXPECT_EQ(reader.request().page.header("X-C"), "");
}

TEST(RequestReader, AVisitorThatWaitsBeforeItsBodyIsKnown) {
  RequestReader reader(HeaderLimits{}, 64);
  const std::string header =
      "POST / HTTP/1.1\r\nHost: h\r\nExpect: 100-continue\r\nContent-Length: 1\r\n\r\n";
  reader.append(header);
  EXPECT_EQ(reader.proceed(), RequestReader::State::Body);
  EXPECT_TRUE(reader.waits_for_continue());
  reader.append("x");
  EXPECT_EQ(reader.proceed(), RequestReader::State::Complete);
  reader.restart();
  reader.append(header + "x");
  EXPECT_EQ(reader.proceed(), RequestReader::State::Complete);
  EXPECT_FALSE(reader.waits_for_continue()) << "it sent the body at once";
}

TEST(RequestReader, AChunkFrameWithoutAnEndIsRefused) {
  RequestReader reader(HeaderLimits{}, 64);
  reader.append("POST / HTTP/1.1\r\nHost: h\r\nTransfer-Encoding: chunked\r\n\r\n1;");
  RequestReader::State state = reader.proceed();
  for (int i = 0; i < 100 && state == RequestReader::State::Body; ++i) {
    reader.append(std::string(1000, 'x'));
    state = reader.proceed();
  }
  EXPECT_EQ(state, RequestReader::State::Refused);
  EXPECT_EQ(reader.refused_status(), 400);
}

}  // namespace
}  // namespace rk::http
