#include "pagehost/http/chunked_body.h"

#include <gtest/gtest.h>

namespace rk::http {
namespace {

// The body, or the status that refuses it, or "..." where it is not complete; fed by pieces.
std::string read(const std::string& bytes, std::size_t piece) {
  ChunkedBody body(64);
  for (std::size_t at = 0; at < bytes.size() && !body.complete(); at += piece) {
    body.feed(std::string_view(bytes).substr(at, piece));
    if (body.refused_status() != 0) return std::to_string(body.refused_status());
  }
  return body.complete() ? body.take() : "...";
}

struct Row {
  std::string bytes;
  const char* seen;
};

TEST(ChunkedBody, ReadsByTheTableHoweverTheBytesAreCut) {
  const Row rows[] = {
      {"0\r\n\r\n", ""},
      {"5\r\nhello\r\n0\r\n\r\n", "hello"},
      {"A\r\n0123456789\r\n1\r\n!\r\n000\r\n\r\n", "0123456789!"},
      {"5;a=b;c=\"d\"\r\nhello\r\n0;x\r\n\r\n", "hello"},
      {"5 \t;a\r\nhello\r\n0\r\n\r\n", "hello"},
      {"5\r\nhello\r\n0\r\nX: y\r\nZ: \r\n\r\n", "hello"},
      {"5\r\na\r\n\nb\r\n0\r\n\r\n", "a\r\n\nb"},
      {"", "..."},
      {"5\r\nhell", "..."},
      {"0\r\n", "..."},
      {"\r\n", "400"},
      {"5\nhello\r\n0\r\n\r\n", "400"},
      {"5\r\nhello\n0\r\n\r\n", "400"},
      {"5\r\nhelloX\r\n0\r\n\r\n", "400"},
      {"5\rhello\r\n0\r\n\r\n", "400"},
      {"-1\r\n", "400"},
      {"+1\r\n", "400"},
      {"0x5\r\nhello\r\n", "400"},
      {" 5\r\nhello\r\n", "400"},
      {"g\r\n", "400"},
      {"0\r\n\n", "400"},
      {"0\r\nX: y\n\r\n", "400"},
      {"0\r\n\x01\r\n\r\n", "400"},
      {"5;\x01\r\nhello\r\n", "400"},
      {"0000000000000005\r\nhello\r\n", "400"},
      {"ffffffffffffffff\r\n", "400"},
      {"41\r\n", "413"},
      {"40\r\n" + std::string(64, 'x') + "\r\n1\r\n", "413"},
      {"0;" + std::string(20000, 'x'), "400"},
  };
  for (const Row& row : rows) {
    for (std::size_t piece = 1; piece < 10; ++piece) {
      EXPECT_EQ(read(row.bytes, piece), row.seen) << "by " << piece << ":\n" << row.bytes;
    }
    EXPECT_EQ(read(row.bytes, row.bytes.size() + 1), row.seen) << row.bytes;
  }
}

TEST(ChunkedBody, WhatComesBehindItIsNotTaken) {
  ChunkedBody body(64);
  EXPECT_EQ(body.feed("1\r\na\r\n0\r\n\r\nGET /"), 11u);
  EXPECT_TRUE(body.complete());
  EXPECT_EQ(body.feed("more"), 0u);
}

}  // namespace
}  // namespace rk::http
