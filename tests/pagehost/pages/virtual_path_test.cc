#include "pagehost/pages/virtual_path.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

using namespace std::string_view_literals;

TEST(VirtualPath, TakesRelativePathsFromTheFolder) {
  EXPECT_EQ(resolved_path("/shop", "a.asp"), "/shop/a.asp");
  EXPECT_EQ(resolved_path("/shop", "../inc/a.asp"), "/inc/a.asp");
  EXPECT_EQ(resolved_path("/shop", "/a.asp"), "/a.asp");
  EXPECT_EQ(resolved_path("", "a.asp"), "/a.asp");
}

TEST(VirtualPath, ReadsBackslashesAndEmptySteps) {
  EXPECT_EQ(resolved_path("/shop", "inc\\conn.asp"), "/shop/inc/conn.asp");
  EXPECT_EQ(resolved_path("", "\\a//b\\.\\c/"), "/a/b/c");
}

TEST(VirtualPath, NoPathLeavesTheSite) {
  EXPECT_EQ(resolved_path("/shop", "../../x"), std::nullopt);
  EXPECT_EQ(resolved_path("/shop", "..\\..\\x"), std::nullopt);
  EXPECT_EQ(resolved_path("/shop", "../../shop/x"), std::nullopt);
  EXPECT_EQ(resolved_path("", "a\0b"sv), std::nullopt);
}

TEST(VirtualPath, TheRootIsEmpty) {
  EXPECT_EQ(resolved_path("/shop", ".."), "");
  EXPECT_EQ(resolved_path("", "/"), "");
}

TEST(VirtualPath, FoldersEndBeforeTheirSlash) {
  EXPECT_EQ(folder_of("/a/b/c.asp"), "/a/b");
  EXPECT_EQ(folder_of("/c.asp"), "");
}

}  // namespace
}  // namespace rk::pagehost
