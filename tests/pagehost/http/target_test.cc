#include "pagehost/http/target.h"

#include <gtest/gtest.h>

#include <utility>

namespace rk::http {
namespace {

// Reads every byte as the Latin character of its number.
class LatinPages final : public platform::CodePages {
 public:
  bool supports(int) const override { return true; }
  std::string to_utf8(std::string_view bytes, int, std::optional<std::size_t>*) const override {
    std::string utf8;
    for (const char c : bytes) {
      const auto byte = static_cast<unsigned char>(c);
      if (byte >= 0x80) utf8.push_back(static_cast<char>(0xC0 | byte >> 6));
      utf8.push_back(byte < 0x80 ? c : static_cast<char>(0x80 | (byte & 0x3F)));
    }
    return utf8;
  }
  std::string from_utf8(std::string_view utf8, int) const override { return std::string(utf8); }
};

std::string path_of(std::string_view target) {
  const std::optional<Target> parsed = parse_target(target, 1252, LatinPages());
  return parsed ? parsed->path : "refused";
}

TEST(Target, ThePathIsDecodedOnceAndCleaned) {
  const std::pair<const char*, const char*> rows[] = {
      {"/", "/"},
      {"/index.asp", "/index.asp"},
      {"/Shop/Index.ASP?x=1", "/Shop/Index.ASP"},
      {"/a%20b", "/a b"},
      {"/a+b", "/a+b"},
      {"/%2541", "/%41"},
      {"/%e4%b8%ad", "/中"},
      {"/%E4", "/ä"},
      {"/\xE4", "/ä"},
      {"//a///b", "/a/b"},
      {"/./a/./b/.", "/a/b/"},
      {"/a/../b", "/b"},
      {"/a/b/..", "/a/"},
      {"/a/..", "/"},
      {"\\a", "refused"},
      {"/a\\b", "/a/b"},
      {"/%41", "/A"},
      {"/%2e/a", "/a"},
      {"/a/%2E%2e/b", "/b"},
      {"/a;b,c", "/a;b,c"},
      {"/a?", "/a"},
      {"/shop/", "/shop/"},
      {"http://a.example/x?y", "/x"},
      {"HTTP://a.example", "/"},
      {"http://a.example?y", "/"},
  };
  for (const auto& [target, path] : rows) EXPECT_EQ(path_of(target), path) << target;
}

TEST(Target, WhatLeavesTheSiteOrReadsTwoWaysIsRefused) {
  const char* rows[] = {
      "/..",
      "/../a",
      "/a/../../b",
      "/%2e%2e/a",
      "/..%2fa",
      "/a/%2e%2e/..",
      "/a%2fb",
      "/a%2Fb",
      "/a%5cb",
      "/a%5C..%5cb",
      "/a\\..\\..\\b",
      "/..\\a",
      "/a%00",
      "/a%00.gif",
      "/%",
      "/%4",
      "/%zz",
      "/%-1",
      "/a%",
      "*",
      "",
      "a",
      "a.example:80",
      "https://a/",
      "http://",
      "http:///a",
      "http://u@h/",
      "ftp://a/",
      "?x",
      "/....//../../a",
  };
  for (const char* target : rows) EXPECT_EQ(path_of(target), "refused") << target;
  EXPECT_EQ(path_of(std::string_view("/a\0.gif", 7)), "refused");
}

TEST(Target, TheQueryStringStaysAsSent) {
  const auto parsed = parse_target("/a?x=%2f..%00+&y=\xE4?z", 1252, LatinPages());
  ASSERT_TRUE(parsed);
  EXPECT_EQ(parsed->query, "x=%2f..%00+&y=\xE4?z");
  EXPECT_EQ(parsed->authority, "");
  EXPECT_EQ(parse_target("http://b:81/a?q", 1252, LatinPages())->authority, "b:81");
}

TEST(Target, APathIsEncodedForAnAddress) {
  EXPECT_EQ(encoded_path("/a b/中?#%"), "/a%20b/%E4%B8%AD%3F%23%25");
  EXPECT_EQ(encoded_path("/a-b_c.d~(e)"), "/a-b_c.d~(e)");
}

}  // namespace
}  // namespace rk::http
