#include "site/page_context.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"

namespace rk::site {
namespace {

using tests::error_of;
using tests::FakePage;

TEST(PageContext, TakesTheFiveObjectsInTheirOrder) {
  const FakePage page;
  EXPECT_EQ(page.scripting->taken,
            (std::vector<std::string>{"Response", "Server", "Request", "Application", "Session"}));
}

TEST(PageContext, RaisesBeforeThePageStarts) {
  const PageContext context;
  EXPECT_EQ(error_of([&] { context.response(); }), 424);
  EXPECT_EQ(error_of([&] { context.server(); }), 424);
  EXPECT_EQ(error_of([&] { context.request(); }), 424);
  EXPECT_EQ(error_of([&] { context.application(); }), 424);
  EXPECT_EQ(error_of([&] { context.session(); }), 424);
}

TEST(PageContext, KeepsTheSessionAfterThePageEnds) {
  FakePage page;
  page.context.end();
  EXPECT_EQ(error_of([&] { page.context.response(); }), 424);
  EXPECT_EQ(error_of([&] { page.context.server(); }), 424);
  EXPECT_EQ(error_of([&] { page.context.request(); }), 424);
  EXPECT_EQ(error_of([&] { page.context.application(); }), 424);
  EXPECT_EQ(&page.context.session(), &page.session);
}

}  // namespace
}  // namespace rk::site
