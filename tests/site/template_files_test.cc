#include "site/template_files.h"

#include <gtest/gtest.h>

#include <set>

namespace rk::site {
namespace {

TEST(TemplateFiles, EachFileHasOneOperationAndEachOperationOneFile) {
  std::set<std::string_view> names;
  std::set<std::string_view> operations;
  for (const TemplateFile& file : template_files()) {
    EXPECT_TRUE(names.insert(file.name).second) << file.name;
    EXPECT_TRUE(operations.insert(file.operation).second) << file.operation;
    EXPECT_TRUE(file.name.ends_with(".html")) << file.name;
  }
}

TEST(TemplateFiles, MarkersAreCommentsAndTagsStandInBraces) {
  for (const TemplateFile& file : template_files()) {
    for (const TemplateStyle& style : file.styles) {
      EXPECT_TRUE(style.start.starts_with("<!--") && style.start.ends_with("Style")) << style.start;
      EXPECT_TRUE(style.end.starts_with("<!--End ") && style.end.ends_with("Style")) << style.end;
    }
    for (const TemplateBlock& block : file.blocks) {
      EXPECT_TRUE(block.start.starts_with("<!--") && block.start.ends_with("-->")) << block.start;
      EXPECT_TRUE(block.end.starts_with("<!--End ") && block.end.ends_with("-->")) << block.end;
      for (const auto tags : {block.needed, block.optional, block.excluded}) {
        for (const std::string_view tag : tags) EXPECT_EQ(tag.front() == '{', tag.back() == '}');
      }
    }
  }
}

}  // namespace
}  // namespace rk::site
