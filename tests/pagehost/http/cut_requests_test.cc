// What goes over the wire, whole: a connection's bytes get the same answers however they are cut.
#include <gtest/gtest.h>

#include <string>

#include "pagehost/http/front.h"
#include "tests/pagehost/http/front_fixture.h"

namespace rk::http {
namespace {

struct Row {
  const char* what;
  std::string bytes;  // all that a visitor sends
  std::string seen;   // of each answer its status and body, one line each
};

const std::string kHead = "Host: h\r\nConnection: close\r\n";

const Row kRows[] = {
    {"a page", "GET /a.asp?x=1 HTTP/1.1\r\n" + kHead + "\r\n", "200 GET /a.asp [x=1] []\n"},
    {"a file", "GET /hello.txt HTTP/1.1\r\n" + kHead + "\r\n", "200 hello\n"},
    {"an empty line before", "\r\nGET /hello.txt HTTP/1.1\r\n" + kHead + "\r\n", "200 hello\n"},
    {"an old version", "GET /hello.txt HTTP/1.0\r\nHost: h\r\n\r\n", "200 hello\n"},
    {"the head alone", "HEAD /a.asp HTTP/1.1\r\n" + kHead + "\r\n", "200 \n"},
    {"the head of a file alone", "HEAD /hello.txt HTTP/1.1\r\n" + kHead + "\r\n", "200 \n"},
    {"more behind a page", "GET /shop/index.asp/7?x HTTP/1.1\r\n" + kHead + "\r\n",
     "200 GET /shop/index.asp [x] []\n"},
    {"a range", "GET /hello.txt HTTP/1.1\r\nRange: bytes=1-3\r\n" + kHead + "\r\n", "206 ell\n"},
    {"a range past the end", "GET /hello.txt HTTP/1.1\r\nRange: bytes=9-\r\n" + kHead + "\r\n",
     "416 \n"},
    {"a body", "POST /a.asp HTTP/1.1\r\nContent-Length: 5\r\n" + kHead + "\r\na=1&b",
     "200 POST /a.asp [] [a=1&b]\n"},
    {"chunks",
     "POST /a.asp HTTP/1.1\r\nTransfer-Encoding: chunked\r\n" + kHead +
         "\r\n2\r\na=\r\n1;x\r\n1\r\n0\r\nT: t\r\n\r\n",
     "200 POST /a.asp [] [a=1]\n"},
    {"two in a row",
     "GET /1.asp HTTP/1.1\r\nHost: h\r\n\r\nGET /2.asp HTTP/1.1\r\n" + kHead + "\r\n",
     "200 GET /1.asp [] []\n200 GET /2.asp [] []\n"},
    {"a body and one behind it",
     "POST /1.asp HTTP/1.1\r\nHost: h\r\nContent-Length: 3\r\n\r\nabcGET /hello.txt HTTP/1.1\r\n" +
         kHead + "\r\n",
     "200 POST /1.asp [] [abc]\n200 hello\n"},
    {"a folder", "GET /shop?q HTTP/1.1\r\n" + kHead + "\r\n", "301 "},
    {"nothing there", "GET /none HTTP/1.1\r\n" + kHead + "\r\n", "404 no /none (/none)\n"},
    {"another method", "PUT /a.asp HTTP/1.1\r\n" + kHead + "\r\n", "405 "},
    {"no host", "GET / HTTP/1.1\r\n\r\n", "400 "},
    {"two hosts", "GET / HTTP/1.1\r\nHost: a\r\nHost: b\r\n\r\n", "400 "},
    {"bare line ends", "GET / HTTP/1.1\nHost: a\n\n", "400 "},
    {"a folded field", "GET / HTTP/1.1\r\nHost: a\r\n b\r\n\r\n", "400 "},
    {"length and chunks",
     "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n",
     "400 "},
    {"another encoding", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: gzip\r\n\r\n", "501 "},
    {"a chunk of no size",
     "POST /a.asp HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\nx\r\n", "400 "},
    {"a body too large", "POST /a.asp HTTP/1.1\r\nHost: a\r\nContent-Length: 1001\r\n\r\n", "413 "},
    {"a version of another day", "GET / HTTP/2.0\r\nHost: a\r\n\r\n", "505 "},
};

// Of each answer on a connection its status, and its body where it is not one of the front's own.
std::string seen_of(std::string answers) {
  std::string seen;
  while (!answers.empty()) {
    const std::size_t head_end = answers.find("\r\n\r\n");
    if (head_end == std::string::npos) return seen + "broken: " + answers;
    const std::string head = answers.substr(0, head_end + 2);
    const std::string status = head.substr(9, 3);
    const std::size_t at = head.find("\r\nContent-Length: ");
    std::size_t length = at == std::string::npos ? 0 : std::stoul(head.substr(at + 18));
    length = std::min(length, answers.size() - head_end - 4);  // of a HEAD nothing follows
    std::string body = answers.substr(head_end + 4, length);
    answers.erase(0, head_end + 4 + length);
    if (body.starts_with("<!doctype")) return seen + status + " " + answers;
    if (!body.ends_with('\n')) body += '\n';
    seen += status + " " + body;
  }
  return seen;
}

class CutRequests : public FrontTest {
 protected:
  // The answers to bytes sent in pieces of so many, or in two of which the first has so many.
  std::string sent(const std::string& bytes, std::size_t piece, bool two) {
    Visitor visitor(port_);
    visitor.send_at_once();
    visitor.send(std::string_view(bytes).substr(0, piece));
    for (std::size_t at = piece; at < bytes.size(); at += piece) {
      // A refusal may come, and the end, while a visitor still sends.
      if (!visitor.try_send(std::string_view(bytes).substr(at, two ? bytes.size() : piece))) break;
      if (two) break;
    }
    return seen_of(visitor.read_all());
  }
};

TEST_F(CutRequests, InOnePieceTheyHaveTheAnswersOfTheTable) {
  start();
  for (const Row& row : kRows)
    EXPECT_EQ(sent(row.bytes, row.bytes.size(), false), row.seen) << row.what;
}

TEST_F(CutRequests, ByteByByteTheyHaveTheSame) {
  start();
  for (const Row& row : kRows) EXPECT_EQ(sent(row.bytes, 1, false), row.seen) << row.what;
}

TEST_F(CutRequests, CutAtEveryPlaceTheyHaveTheSame) {
  start();
  for (const Row& row : kRows) {
    for (std::size_t cut = 1; cut < row.bytes.size(); ++cut) {
      ASSERT_EQ(sent(row.bytes, cut, true), row.seen) << row.what << " cut at " << cut;
    }
  }
}

}  // namespace
}  // namespace rk::http
