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
    return kKinds[static_cast<int>(way.kind)] + way.path;
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

}  // namespace
}  // namespace rk::http
