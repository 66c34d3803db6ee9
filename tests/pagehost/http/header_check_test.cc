#include "pagehost/http/header_check.h"

#include <gtest/gtest.h>

#include <string>

namespace rk::http {
namespace {

using namespace std::string_literals;

// The status that a header is refused with, 0 for none, fed in pieces of so many bytes.
int status_of(const std::string& header, std::size_t piece, const HeaderLimits& limits = {}) {
  HeaderScan scan(limits);
  for (std::size_t end = piece;; end += piece) {
    const std::string received = header.substr(0, end);
    switch (scan.feed(received)) {
      case HeaderScan::State::Refused:
        return scan.refusal().status;
      case HeaderScan::State::Complete:
        return reject_reason(header.substr(scan.begin(), scan.end() - scan.begin())).status;
      case HeaderScan::State::More:
        if (end >= header.size()) return -1;
    }
  }
}

struct Row {
  const char* what;
  std::string header;
  int status;
};

const Row kRows[] = {
    {"a plain request", "GET / HTTP/1.1\r\nHost: a\r\n\r\n", 0},
    {"an old version", "GET / HTTP/1.0\r\nHost: a\r\n\r\n", 0},
    {"a host with a port", "GET / HTTP/1.1\r\nHost: blue.localhost:8080\r\n\r\n", 0},
    {"a host with a quote", "GET / HTTP/1.1\r\nHost: o'neil.example\r\n\r\n", 0},
    {"an empty field", "GET / HTTP/1.1\r\nHost: a\r\nX:\r\n\r\n", 0},
    {"blanks around a value", "GET / HTTP/1.1\r\nHost: \t a \t\r\n\r\n", 0},
    {"a tab within a value", "GET / HTTP/1.1\r\nHost: a\r\nX: a\tb\r\n\r\n", 0},
    {"bytes above ASCII", "GET /\xD6\xD0?\xE4 HTTP/1.1\r\nHost: a\r\nX: \xE4\r\n\r\n", 0},
    {"an empty line before", "\r\nGET / HTTP/1.1\r\nHost: a\r\n\r\n", 0},
    {"chunked in capitals", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: Chunked\r\n\r\n", 0},
    {"three empty lines before", "\r\n\r\n\r\nGET / HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"no host", "GET / HTTP/1.1\r\n\r\n", 400},
    {"no host, old version", "GET / HTTP/1.0\r\n\r\n", 400},
    {"an empty host", "GET / HTTP/1.1\r\nHost:\r\n\r\n", 400},
    {"two hosts", "GET / HTTP/1.1\r\nHost: a\r\nHost: a\r\n\r\n", 400},
    {"two hosts, letter case", "GET / HTTP/1.1\r\nHost: a\r\nhOST: b\r\n\r\n", 400},
    {"two hosts in one", "GET / HTTP/1.1\r\nHost: a b\r\n\r\n", 400},
    {"a path in the host", "GET / HTTP/1.1\r\nHost: a/b\r\n\r\n", 400},
    {"a user in the host", "GET / HTTP/1.1\r\nHost: a@b\r\n\r\n", 400},
    {"two lengths", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1\r\nContent-Length: 1\r\n\r\n",
     400},
    {"a list of lengths", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1, 1\r\n\r\n", 400},
    {"a signed length", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: +1\r\n\r\n", 400},
    {"a negative length", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: -1\r\n\r\n", 400},
    {"a hexadecimal length", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 0x1\r\n\r\n", 400},
    {"an empty length", "POST / HTTP/1.1\r\nHost: a\r\nContent-Length:\r\n\r\n", 400},
    {"a length past all numbers",
     "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 18446744073709551617\r\n\r\n", 413},
    {"length and chunked",
     "POST / HTTP/1.1\r\nHost: a\r\nContent-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n", 400},
    {"chunked and length",
     "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\nContent-Length: 1\r\n\r\n", 400},
    {"gzip", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: gzip\r\n\r\n", 501},
    {"gzip, chunked", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: gzip, chunked\r\n\r\n",
     501},
    {"identity", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: identity\r\n\r\n", 501},
    {"something chunked", "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: xchunked\r\n\r\n", 501},
    {"chunked twice",
     "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\nTransfer-Encoding: "
     "chunked\r\n\r\n",
     400},
    {"chunked, old version", "POST / HTTP/1.0\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n",
     400},
    {"chunked behind a vertical tab",
     "POST / HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: \x0B"
     "chunked\r\n\r\n",
     400},
    {"a folded field", "GET / HTTP/1.1\r\nHost: a\r\nX: a\r\n b\r\n\r\n", 400},
    {"a folded first field", "GET / HTTP/1.1\r\n Host: a\r\n\r\n", 400},
    {"a blank before the colon", "GET / HTTP/1.1\r\nHost : a\r\n\r\n", 400},
    {"a tab before the colon", "GET / HTTP/1.1\r\nHost\t: a\r\n\r\n", 400},
    {"a field without a name", "GET / HTTP/1.1\r\nHost: a\r\n: x\r\n\r\n", 400},
    {"a field without a colon", "GET / HTTP/1.1\r\nHost: a\r\nX\r\n\r\n", 400},
    {"a bracket in a name", "GET / HTTP/1.1\r\nHost: a\r\nX(y): x\r\n\r\n", 400},
    {"bare line feeds", "GET / HTTP/1.1\nHost: a\n\n", 400},
    {"one bare line feed", "GET / HTTP/1.1\r\nHost: a\nX: b\r\n\r\n", 400},
    {"a bare carriage return", "GET / HTTP/1.1\r\nHost: a\rX: b\r\n\r\n", 400},
    {"two carriage returns", "GET / HTTP/1.1\r\r\nHost: a\r\n\r\n", 400},
    {"a NUL in a value", "GET / HTTP/1.1\r\nHost: a\0\r\n\r\n"s, 400},
    {"a NUL in the path", "GET /\0 HTTP/1.1\r\nHost: a\r\n\r\n"s, 400},
    {"a control in a value", "GET / HTTP/1.1\r\nHost: a\r\nX: \x01\r\n\r\n", 400},
    {"a delete in a value", "GET / HTTP/1.1\r\nHost: a\r\nX: \x7F\r\n\r\n", 400},
    {"no target", "GET HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"two blanks", "GET  / HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"a tab for a blank", "GET\t/ HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"a blank in the target", "GET /a b HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"a fragment", "GET /#a HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"no method", " / HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"a method of brackets", "G(T / HTTP/1.1\r\nHost: a\r\n\r\n", 400},
    {"no version", "GET /\r\nHost: a\r\n\r\n", 400},
    {"another protocol", "GET / HTCPCP/1.1\r\nHost: a\r\n\r\n", 400},
    {"small letters", "GET / http/1.1\r\nHost: a\r\n\r\n", 400},
    {"a blank behind the version", "GET / HTTP/1.1 \r\nHost: a\r\n\r\n", 400},
    {"version 2", "GET / HTTP/2.0\r\nHost: a\r\n\r\n", 505},
    {"version 1.2", "GET / HTTP/1.2\r\nHost: a\r\n\r\n", 505},
    {"a TLS greeting", "\x16\x03\x01\x02\0\x01"s, 400},
};

TEST(HeaderCheck, RefusesByTheTableHoweverTheBytesAreCut) {
  for (const Row& row : kRows) {
    for (const std::size_t piece :
         {std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{4}, std::size_t{5},
          std::size_t{6}, std::size_t{7}, std::size_t{8}, row.header.size()}) {
      EXPECT_EQ(status_of(row.header, piece), row.status) << row.what << " by " << piece;
    }
  }
}

TEST(HeaderCheck, ARequestLinePastItsLimitIs414BeforeItsEndIsThere) {
  const HeaderLimits limits{32, 1024, 10};
  const std::string fits = "GET /" + std::string(32 - 14, 'a') + " HTTP/1.1";
  ASSERT_EQ(fits.size(), 32u);
  EXPECT_EQ(status_of(fits + "\r\nHost: a\r\n\r\n", 1, limits), 0);
  EXPECT_EQ(status_of("GET /a" + fits.substr(5) + "\r\nHost: a\r\n\r\n", 1, limits), 414);
  EXPECT_EQ(status_of("GET /" + std::string(100, 'a'), 7, limits), 414);
}

TEST(HeaderCheck, TooManyBytesOrFieldsAre431BeforeTheirEndIsThere) {
  const HeaderLimits limits{64, 128, 3};
  const std::string start = "GET / HTTP/1.1\r\nHost: a\r\n";
  EXPECT_EQ(status_of(start + "A: 1\r\nB: 2\r\n\r\n", 1, limits), 0);
  EXPECT_EQ(status_of(start + "A: 1\r\nB: 2\r\nC: 3\r\n\r\n", 1, limits), 431);
  EXPECT_EQ(status_of(start + "A: " + std::string(200, 'a'), 5, limits), 431);
  EXPECT_EQ(status_of(start + "A: " + std::string(100, 'a') + "\r\n\r\n", 5, limits), 431);
}

}  // namespace
}  // namespace rk::http
