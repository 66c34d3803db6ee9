#include "pagehost/components/file_paths.h"

#include <gtest/gtest.h>

namespace rk::pagehost {
namespace {

TEST(FilePaths, PartsAreNamedWithEitherSlash) {
  EXPECT_EQ(file_name_of("/a/b\\c.txt"), "c.txt");
  EXPECT_EQ(base_name_of("/a/c.d.txt"), "c.d");
  EXPECT_EQ(extension_of("/a.b/c"), "");
  EXPECT_EQ(extension_of("c.TXT"), "TXT");
  EXPECT_EQ(parent_folder_of("/a/b/"), "/a");
  EXPECT_EQ(parent_folder_of("/a"), "/");
  EXPECT_EQ(joined_path("/a/", "b"), "/a/b");
  EXPECT_EQ(joined_path("/a", "b"), "/a/b");
  EXPECT_EQ(joined_path("c:\\a", "b"), "c:\\a\\b");
  EXPECT_EQ(joined_path("c:", "b"), "c:\\b");
  EXPECT_EQ(joined_path("/site\\a", "b"), "/site\\a/b");
  EXPECT_EQ(path_in_site("/site", "a.txt"), "/site/a.txt");
  EXPECT_EQ(path_in_site("/site", "\\b\\a.txt"), "\\b\\a.txt");
}

TEST(FilePaths, WildcardsStandForAnyLetters) {
  EXPECT_TRUE(matches_wildcard("Report.TXT", "*.txt"));
  EXPECT_TRUE(matches_wildcard("a1.log", "a?.l*"));
  EXPECT_FALSE(matches_wildcard("a.log", "a?.log"));
  EXPECT_TRUE(matches_wildcard("anything", "*"));
  EXPECT_FALSE(matches_wildcard("", "?"));
}

}  // namespace
}  // namespace rk::pagehost
