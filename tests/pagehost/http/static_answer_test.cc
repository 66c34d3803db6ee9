#include "pagehost/http/static_answer.h"

#include <gtest/gtest.h>

#include <utility>

namespace rk::http {
namespace {

using namespace std::string_view_literals;

// 1994-11-06 08:49:37, and a thousand bytes.
constexpr platform::FileStamp kStamp{784111777'500000000, 1000, 1};
constexpr const char* kModified = "Sun, 06 Nov 1994 08:49:37 GMT";

std::string header(const StaticAnswer& answer, std::string_view name) {
  for (const auto& [key, value] : answer.head.headers) {
    if (key == name) return value;
  }
  return "";
}

StaticAnswer answer_to(pagehost::Headers headers, const char* method = "GET") {
  pagehost::PageRequest request;
  request.method = method;
  request.headers = std::move(headers);
  return static_answer(request, "/a.png", kStamp);
}

TEST(StaticAnswer, AFileComesWholeWithItsTypeAndStamps) {
  const StaticAnswer answer = answer_to({});
  EXPECT_EQ(answer.head.status, 200);
  EXPECT_EQ(answer.offset, 0u);
  EXPECT_EQ(answer.count, 1000u);
  EXPECT_EQ(header(answer, "Content-Type"), "image/png");
  EXPECT_EQ(header(answer, "Last-Modified"), kModified);
  EXPECT_EQ(header(answer, "Accept-Ranges"), "bytes");
  EXPECT_TRUE(header(answer, "ETag").starts_with('"'));
}

TEST(StaticAnswer, WhatTheVisitorHasIsNotSentAgain) {
  const std::string tag = header(answer_to({}), "ETag");
  EXPECT_EQ(answer_to({{"If-None-Match", tag}}).head.status, 304);
  EXPECT_EQ(answer_to({{"If-None-Match", "\"x\", W/" + tag}}).head.status, 304);
  EXPECT_EQ(answer_to({{"If-None-Match", "*"}}).head.status, 304);
  EXPECT_EQ(answer_to({{"If-None-Match", "\"x\""}}).head.status, 200);
  EXPECT_EQ(answer_to({{"If-Modified-Since", kModified}}).head.status, 304);
  EXPECT_EQ(answer_to({{"If-Modified-Since", "Sun, 06 Nov 1994 08:49:36 GMT"}}).head.status, 200);
  EXPECT_EQ(answer_to({{"If-Modified-Since", "soon"}}).head.status, 200);
  EXPECT_EQ(answer_to({{"If-None-Match", "\"x\""}, {"If-Modified-Since", kModified}}).head.status,
            200)
      << "the tag beats the date";
  EXPECT_EQ(answer_to({{"If-None-Match", tag}}).count, 0u);
}

TEST(StaticAnswer, APreconditionThatFailsIs412) {
  const std::string tag = header(answer_to({}), "ETag");
  EXPECT_EQ(answer_to({{"If-Match", tag}}).head.status, 200);
  EXPECT_EQ(answer_to({{"If-Match", "\"x\""}}).head.status, 412);
  EXPECT_EQ(answer_to({{"If-Unmodified-Since", "Sat, 05 Nov 1994 08:49:37 GMT"}}).head.status, 412);
}

struct RangeRow {
  const char* range;
  int status;
  std::uint64_t offset;
  std::uint64_t count;
  const char* content_range;
};

TEST(StaticAnswer, OneRangeIsServedAloneAndOddOnesWhole) {
  const RangeRow rows[] = {
      {"bytes=0-9", 206, 0, 10, "bytes 0-9/1000"},
      {"bytes=990-", 206, 990, 10, "bytes 990-999/1000"},
      {"bytes=990-5000", 206, 990, 10, "bytes 990-999/1000"},
      {"bytes=-1", 206, 999, 1, "bytes 999-999/1000"},
      {"bytes=-5000", 206, 0, 1000, "bytes 0-999/1000"},
      {"bytes=1000-", 416, 0, 0, "bytes */1000"},
      {"bytes=-0", 416, 0, 0, "bytes */1000"},
      {"bytes=0-1,5-6", 200, 0, 1000, ""},
      {"bytes=9-0", 200, 0, 1000, ""},
      {"bytes=a-b", 200, 0, 1000, ""},
      {"bytes=-", 200, 0, 1000, ""},
      {"lines=0-1", 200, 0, 1000, ""},
      {"bytes=0-18446744073709551616", 200, 0, 1000, ""},
  };
  for (const RangeRow& row : rows) {
    const StaticAnswer answer = answer_to({{"Range", row.range}});
    EXPECT_EQ(answer.head.status, row.status) << row.range;
    EXPECT_EQ(answer.offset, row.offset) << row.range;
    EXPECT_EQ(answer.count, row.count) << row.range;
    EXPECT_EQ(header(answer, "Content-Range"), row.content_range) << row.range;
  }
}

TEST(StaticAnswer, ARangeOfAnOlderStateIsServedWhole) {
  const std::string tag = header(answer_to({}), "ETag");
  EXPECT_EQ(answer_to({{"Range", "bytes=0-9"}, {"If-Range", tag}}).head.status, 206);
  EXPECT_EQ(answer_to({{"Range", "bytes=0-9"}, {"If-Range", "\"x\""}}).head.status, 200);
  EXPECT_EQ(answer_to({{"Range", "bytes=0-9"}, {"If-Range", kModified}}).head.status, 206);
  EXPECT_EQ(answer_to({{"Range", "bytes=0-9"}}, "HEAD").head.status, 200);
}

TEST(StaticAnswer, DatabasesAreKnownByTheirFirstBytes) {
  EXPECT_TRUE(begins_as_database("SQLite format 3\0more"sv));
  EXPECT_TRUE(begins_as_database("\0\1\0\0Standard Jet DB"sv));
  EXPECT_TRUE(begins_as_database("\0\1\0\0Standard ACE DB"sv));
  EXPECT_FALSE(begins_as_database("SQLite format"sv));
  EXPECT_FALSE(begins_as_database(""sv));
}

TEST(StaticAnswer, WhatNoVisitorMayReadIsHidden) {
  const std::vector<std::string> folders{"/log", "/data", "/private/db"};
  const char* hidden[] = {
      "/global.asa",   "/GLOBAL.ASA",      "/inc/conn.inc", "/rkclient.ini",   "/x/shop.db",
      "/shop.db-wal",  "/shop.db-shm",     "/a.db-journal", "/shop.mdb",       "/a.accdb",
      "/a.LOG",        "/log/x.txt",       "/LOG/x.txt",    "/data/a.html",    "/Data",
      "/log/",         "/.git/config",     "/a/.htaccess",  "/.well-known/.x", "/private/DB/x",
      "/.well-knownx", "/a/.well-known/b",
  };
  for (const char* path : hidden) EXPECT_TRUE(is_hidden(path, folders)) << path;
  const char* open[] = {"/",
                        "/index.asp",
                        "/logo.png",
                        "/logs/x",
                        "/database/x.html",
                        "/a.dbx",
                        "/asa",
                        "/.well-known/acme-challenge/token",
                        "/private/x",
                        "/x.ini.html",
                        "/a..b"};
  for (const char* path : open) EXPECT_FALSE(is_hidden(path, folders)) << path;
}

}  // namespace
}  // namespace rk::http
