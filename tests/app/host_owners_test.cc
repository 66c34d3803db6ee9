#include "app/host_owners.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/recording_database.h"

namespace rk::app {
namespace {

class CollectingLog final : public pagehost::Log {
 public:
  void error(std::string_view event) override { events.emplace_back(event); }
  void note(std::string_view event) override { events.emplace_back(event); }
  std::vector<std::string> events;
};

class HostOwnersTest : public ::testing::Test {
 protected:
  void storefront(std::string_view site_domain) {
    database_.answer("Select [SiteDomain] From [SysTem]",
                     {{"SiteDomain"}, {{tests::text(site_domain)}}});
    database_.answer("Select [AgentDomain] From [Rk_AgentSet]",
                     {{"AgentDomain"},
                      {{tests::text("Blue.example")},
                       {tests::text("green.example,www.Green.example")},
                       {Value::null()}}});
  }
  bool named(std::string_view host) {
    log_.events.clear();
    HostOwners(log_).note(host, database_, "Data Source=shop.db");
    return !log_.events.empty();
  }

  tests::RecordingDatabase database_;
  CollectingLog log_;
};

TEST_F(HostOwnersTest, AHostOfTheMasterOrOfAnAgentIsOwned) {
  storefront("shop.example,www.shop.example");
  for (const char* host : {"shop.example", "SHOP.example", "www.shop.example", "blue.example",
                           "green.example", "WWW.green.example"}) {
    EXPECT_FALSE(named(host)) << host;
  }
  EXPECT_TRUE(named("other.example"));
  EXPECT_TRUE(named("a.blue.example")) << "a longer name is another one";
}

TEST_F(HostOwnersTest, AMasterWithoutADomainOwnsEveryHost) {
  storefront("");
  EXPECT_FALSE(named("other.example"));
}

TEST_F(HostOwnersTest, AHostIsNamedOnce) {
  storefront("shop.example");
  HostOwners owners(log_);
  owners.note("other.example", database_, "x");
  owners.note("other.example", database_, "x");
  EXPECT_EQ(log_.events.size(), 1u);
  EXPECT_NE(log_.events.front().find("\"other.example\""), std::string::npos);
}

TEST_F(HostOwnersTest, MadeUpNamesFillNeitherMemoryNorLog) {
  storefront("shop.example");
  HostOwners owners(log_);
  for (std::size_t i = 0; i < HostOwners::kMaxHosts + 100; ++i) {
    owners.note("host" + std::to_string(i), database_, "x");
  }
  EXPECT_EQ(log_.events.size(), HostOwners::kMaxHosts);
}

TEST_F(HostOwnersTest, ADatabaseThatFailsIsLeftToThePageAndAskedAgain) {
  HostOwners owners(log_);
  owners.note("other.example", database_, "x");
  EXPECT_TRUE(log_.events.empty());
  storefront("shop.example");
  owners.note("other.example", database_, "x");
  EXPECT_EQ(log_.events.size(), 1u);
}

}  // namespace
}  // namespace rk::app
