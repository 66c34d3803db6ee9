#include "pagehost/http/route.h"

#include <gtest/gtest.h>

#include "tests/support/memory_files.h"

namespace rk::http {
namespace {

class RouteTest : public ::testing::Test {
 protected:
  RouteTest() {
    for (const char* path : {"/index.asp", "/shop/default.asp", "/shop/index.html", "/img/a.png",
                             "/old/index.html", "/data/x.html", "/global.asa"}) {
      files_.put(std::string("/site") + path, "x");
    }
  }
  std::string of(std::string_view path) {
    const RouteRules rules{
        "/site", {"/log", "/data"}, [](std::string_view one) { return one.ends_with(".asp"); }};
    const Route way = route(path, rules, files_);
    constexpr const char* kKinds[] = {"page ", "file ", "folder ", "nothing"};
    return kKinds[static_cast<int>(way.kind)] + way.path +
           (way.path_info.empty() ? "" : " of " + way.path_info);
  }

  tests::MemoryFiles files_;
};

TEST_F(RouteTest, AFolderLeadsToItsFirstDefaultDocument) {
  EXPECT_EQ(of("/"), "page /index.asp");
  EXPECT_EQ(of("/shop/"), "page /shop/default.asp");
  EXPECT_EQ(of("/old/"), "file /old/index.html");
  EXPECT_EQ(of("/img/"), "nothing");
  EXPECT_EQ(of("/none/"), "nothing");
}

TEST_F(RouteTest, AFolderWithoutItsSlashLeadsToItself) {
  EXPECT_EQ(of("/shop"), "folder /shop");
}

TEST_F(RouteTest, AFoldersRedirectKeepsTheQueryStringAndEncodesThePath) {
  const auto location = [](std::string_view path, std::string_view query) {
    return folder_redirect(path, query).headers.back().second;
  };
  EXPECT_EQ(folder_redirect("/shop", "").status, 301);
  EXPECT_EQ(location("/shop", ""), "/shop/");
  EXPECT_EQ(location("/shop", "a=%20&b"), "/shop/?a=%20&b");
  EXPECT_EQ(location("/a b\r\n", ""), "/a%20b%0D%0A/");
}

TEST_F(RouteTest, APageIsThePageHostsWhetherItIsThereOrNot) {
  EXPECT_EQ(of("/index.asp"), "page /index.asp");
  EXPECT_EQ(of("/none.asp"), "page /none.asp");
}

TEST_F(RouteTest, FilesAreServedUnlessTheyAreHidden) {
  EXPECT_EQ(of("/img/a.png"), "file /img/a.png");
  EXPECT_EQ(of("/img/b.png"), "file /img/b.png") << "who opens it finds out";
  EXPECT_EQ(of("/global.asa"), "nothing");
  EXPECT_EQ(of("/data/x.html"), "nothing");
  EXPECT_EQ(of("/data/x.asp"), "nothing");
  EXPECT_EQ(of("/data"), "nothing");
}

TEST_F(RouteTest, WhatStandsBehindAPageIsThePages) {
  files_.put("/site/Shop/show.asp", "x");
  EXPECT_EQ(of("/index.asp/7.html"), "page /index.asp of /index.asp/7.html");
  EXPECT_EQ(of("/INDEX.asp/a/b"), "page /INDEX.asp of /INDEX.asp/a/b");
  EXPECT_EQ(of("/index.asp/"), "page /index.asp of /index.asp/");
  EXPECT_EQ(of("/index.asp/other.asp"), "page /index.asp of /index.asp/other.asp");
  EXPECT_EQ(of("/shop/show.asp/x"), "page /shop/show.asp of /shop/show.asp/x");
}

TEST_F(RouteTest, NamesThatNobodyMayReadAreRefusedBehindAPageToo) {
  EXPECT_EQ(of("/index.asp/global.asa"), "nothing");
  EXPECT_EQ(of("/index.asp/.git"), "nothing");
  EXPECT_EQ(of("/index.asp/x.mdb"), "nothing");
  EXPECT_EQ(of("/data/x.asp/1"), "nothing");
}

TEST_F(RouteTest, AFolderNamedLikeAPageIsAFolder) {
  files_.put("/site/old.asp/index.html", "x");
  files_.put("/site/old.asp/a.txt", "x");
  files_.put("/site/old.asp/show.asp", "x");
  EXPECT_EQ(of("/old.asp/"), "file /old.asp/index.html");
  EXPECT_EQ(of("/old.asp/a.txt"), "file /old.asp/a.txt");
  EXPECT_EQ(of("/old.asp/show.asp"), "page /old.asp/show.asp");
  EXPECT_EQ(of("/old.asp/show.asp/7"), "page /old.asp/show.asp of /old.asp/show.asp/7");
}

TEST_F(RouteTest, WhatStandsBehindNoPageIsNotThere) {
  EXPECT_EQ(of("/none.asp/7.html"), "file /none.asp/7.html") << "who opens it finds out";
  EXPECT_EQ(of("/none.asp/x.asp"), "page /none.asp/x.asp");
  EXPECT_EQ(of("/none.asp/"), "nothing");
}

}  // namespace
}  // namespace rk::http
