#include "site/template_cache.h"

#include <gtest/gtest.h>

#include "tests/support/fake_page.h"
#include "value/conversions.h"

namespace rk::site {
namespace {

using tests::error_of;
using tests::FakePage;

class TemplateCache : public testing::Test {
 protected:
  std::string entry() {
    return joined_text(page.application.value("Rk_TP_/Template/blue/Menu.html")).string();
  }
  Value load() { return loadfile(page.context, file); }

  FakePage page;
  const Value file = Value::text("/Template/blue/Menu.html");
};

TEST_F(TemplateCache, LoadsAFileUnderTheLockAndReturnsNothing) {
  page.put_template("Menu.html", "<p>menu</p>");
  EXPECT_TRUE(load().is_empty());
  EXPECT_EQ(entry(), "<p>menu</p>");
  EXPECT_EQ(page.application.events,
            (std::vector<std::string>{"lock", "set Rk_Tp_/Template/blue/Menu.html", "unlock"}));
}

TEST_F(TemplateCache, MissingFileIsToldAndTriedAgainLater) {
  EXPECT_EQ(joined_text(load()).view(), "Not File!");
  EXPECT_EQ(entry(), "");
  EXPECT_TRUE(page.application.events.empty());
  loadfile_fromcache(page.context, file);
  EXPECT_EQ(entry(), "");
  page.put_template("Menu.html", "there");
  loadfile_fromcache(page.context, file);
  EXPECT_EQ(entry(), "there");
}

TEST_F(TemplateCache, FileThatMayNotBeReadOrPathThatIsBadIsNoFile) {
  page.put_template("Menu.html", "secret");
  page.files.forbid("/site/Template/blue/Menu.html");
  EXPECT_EQ(joined_text(load()).view(), "Not File!");
  EXPECT_EQ(joined_text(loadfile(page.context, Value::text("/../x"))).view(), "Not File!");
  EXPECT_EQ(joined_text(loadfile(page.context, Value::null())).view(), "Not File!");
}

TEST_F(TemplateCache, FailedLoadLeavesTheEntryAsItWas) {
  page.put_template("Menu.html", "old");
  load();
  page.files.remove("/site/Template/blue/Menu.html");
  EXPECT_EQ(joined_text(load()).view(), "Not File!");
  EXPECT_EQ(entry(), "old");
}

TEST_F(TemplateCache, ReadsAFileOnceInTheApplicationsLife) {
  page.put_template("Menu.html", "one");
  loadfile_fromcache(page.context, file);
  page.put_template("Menu.html", "two");
  loadfile_fromcache(page.context, file);
  EXPECT_EQ(entry(), "one");
  EXPECT_EQ(page.files.reads().size(), 1u);
}

TEST_F(TemplateCache, EmptyFileIsStoredEmptyAndTriedEachTime) {
  page.put_template("Menu.html", "");
  EXPECT_TRUE(load().is_empty());
  EXPECT_EQ(page.application.events.size(), 3u);
  loadfile_fromcache(page.context, file);
  loadfile_fromcache(page.context, file);
  EXPECT_EQ(page.files.reads().size(), 3u);
}

TEST_F(TemplateCache, UpdateReadsAgainWhateverTheCacheHolds) {
  page.put_template("Menu.html", "one");
  loadfile_fromcache(page.context, file);
  page.put_template("Menu.html", "two");
  update_cache(page.context, file);
  EXPECT_EQ(entry(), "two");
  EXPECT_EQ(page.application.events.back(), "unlock");
}

TEST_F(TemplateCache, UpdateRaisesForAMissingFile) {
  EXPECT_EQ(error_of([&] { update_cache(page.context, file); }), 53);
  EXPECT_EQ(error_of([&] { update_cache(page.context, Value::null()); }), 94);
}

TEST_F(TemplateCache, BothSpellingsOfANameAreOneEntry) {
  page.application.set_value("RK_tp_/template/BLUE/menu.HTML", Value::text("kept"));
  loadfile_fromcache(page.context, file);
  EXPECT_EQ(entry(), "kept");
  EXPECT_TRUE(page.files.reads().empty());
}

TEST_F(TemplateCache, TemplateTextSharesTheCachedText) {
  page.put_template("Menu.html", "shared");
  const Text first = template_text(page.context, "Menu.html");
  const Text second = template_text(page.context, "Menu.html");
  EXPECT_EQ(first.view(), "shared");
  EXPECT_EQ(first.identity(), second.identity());
}

TEST_F(TemplateCache, MissingTemplateIsAnEmptyText) {
  EXPECT_TRUE(template_text(page.context, "Menu.html").empty());
}

}  // namespace
}  // namespace rk::site
