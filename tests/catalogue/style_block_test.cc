#include "catalogue/style_block.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/array.h"

namespace rk::catalogue {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::number;

constexpr char kFile[] =
    "<!--A Style-->none<!--End A Style--><!--A Style2-->two<!--End A Style2-->";

std::string_view block(const Value& style) {
  return style_block(kFile, "<!--A Style", "<!--End A Style", style);
}

TEST(StyleBlock, IsNamedByTheStyle) {
  EXPECT_EQ(block(Value()), "none");
  EXPECT_EQ(block(Value::null()), "none");
  EXPECT_EQ(block(number(2)), "two");
  EXPECT_EQ(block(number(3)), "");
}

TEST(StyleBlock, StyleWithoutATextRaises) {
  EXPECT_EQ(error_of([] { block(Value::array(Array::of({}))); }), 13);
}

TEST(RowIfAny, ClosesWhatFoundNothing) {
  FakePage page;
  page.db.answer("none", {{"a"}, {}});
  page.db.answer("one", {{"a"}, {{number(1)}}});
  const auto db = page.db.connection();
  db->open("x");
  const platform::ReadScope one_view(*db);
  EXPECT_EQ(row_if_any(*db, "none"), nullptr);
  EXPECT_EQ(page.db.log().back(), "close recordset");
  const auto row = row_if_any(*db, "one");
  ASSERT_NE(row, nullptr);
  EXPECT_EQ(page.db.log().back(), "execute one") << "still open";
}

}  // namespace
}  // namespace rk::catalogue
