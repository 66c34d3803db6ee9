#include "classes/site_main.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <set>

#include "tests/support/fake_page.h"
#include "tests/support/made_object.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::classes {
namespace {

using tests::error_of;
using tests::FakePage;
using tests::text;

class SiteMainObject : public tests::MadeObject {
 protected:
  SiteMainObject() : MadeObject("rkclient.sitemain") {}
};

TEST_F(SiteMainObject, IsMadeByItsProgramIdentifier) {
  ASSERT_TRUE(object);
  EXPECT_EQ(object->type_name(), "SiteMain");
}

TEST_F(SiteMainObject, FindsOperationsInAnyLetterCase) {
  EXPECT_NE(object->member("Show_HostList"), kNoMember);
  EXPECT_EQ(object->member("show_hostlist"), object->member("Show_HostList"));
  EXPECT_EQ(object->member("Show_Host"), kNoMember);
  EXPECT_EQ(object->member(""), kNoMember);
}

TEST_F(SiteMainObject, EveryOperationStandsOnceInTheTable) {
  std::set<std::string> names;
  for (const auto& row : SiteMain::operations()) {
    EXPECT_TRUE(names.insert(lowered_ascii(row.name)).second) << row.name;
  }
}

TEST_F(SiteMainObject, EveryOperationIsDocumented) {
  std::ifstream file(RK_SOURCE_DIR "/docs/operations.md");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  ASSERT_NE(text.find("# SiteMain"), std::string::npos);
  for (const auto& row : SiteMain::operations()) {
    const std::string heading = std::string("\n### `").append(row.name).append("(");
    EXPECT_NE(text.find(heading), std::string::npos) << row.name;
  }
}

TEST_F(SiteMainObject, RendersAListThroughItsFace) {
  page.put_template("Host-HostList-LitInfo.html",
                    "<!--HostList Style1-->{Page}/{ListLineHeight}<!--End HostList Style1-->");
  page.db.answer(
      "Select Top 5 [Id],[HostSpace],[HostName],[Scriptmaps],[MaxConnections],[MaxBandwidth],"
      "[Price],[MonPrice],[freeMail],[freeMsSql],[freeMySql] From [Rk_HostList] Where [AgentS]=1 "
      "Order By [Price] Desc",
      {{"Id"}, {}});
  start();
  EXPECT_EQ(text_of("Show_HostList", {text("1"), text("5"), text("3"), text("|"), text("Price"),
                                      text("20"), text("30"), text("10"), text("green")}),
            "1/30");
}

TEST_F(SiteMainObject, AssignsToTheCallersVariable) {
  Value file = text("{a}");
  Value name = text("a");
  Value content = text("x");
  Value* arguments[] = {&file, &name, &content};
  const Value result = object->invoke(object->member("Set_Tags"), CallKind::Get, arguments);
  EXPECT_EQ(result.as_view(), "x");
  EXPECT_EQ(name.as_view(), "{a}");
}

TEST_F(SiteMainObject, OperationsWithoutAResultReturnEmpty) {
  start();
  EXPECT_TRUE(call("loadfile_fromcache", {text("/Template/blue/x.html")}).is_empty());
  EXPECT_TRUE(call("OnEndPage", {}).is_empty());
}

TEST_F(SiteMainObject, WrongCountOfArgumentsRaises450) {
  start();
  EXPECT_EQ(error_of([&] { call("GetTempPath", {text("x")}); }), 450);
  EXPECT_EQ(error_of([&] { call("GetKey", {text("x"), text("y")}); }), 450);
  EXPECT_EQ(error_of([&] { call("ReStr", {Value::missing()}); }), 449);
}

TEST_F(SiteMainObject, UnknownMembersAndAssignmentsRaise438) {
  EXPECT_EQ(error_of([&] { call("Show_Nothing", {}); }), 438);
  EXPECT_EQ(error_of([&] { call("ReStr", {text("x")}, CallKind::Let); }), 438);
  EXPECT_EQ(error_of([&] { object->invoke(kDefaultMember, CallKind::Get, {}); }), 438);
  EXPECT_EQ(error_of([&] { object->invoke(1000, CallKind::Get, {}); }), 438);
}

TEST_F(SiteMainObject, NeedsThePageBeforeItShowsAnything) {
  EXPECT_EQ(error_of([&] { call("GetTempPath", {}); }), 424);
  EXPECT_EQ(error_of([&] { call("GetScriptPath", {}); }), 424);
  EXPECT_EQ(error_of([&] { call("loadfile_fromcache", {text("x")}); }), 424);
  EXPECT_EQ(error_of([&] { call("update_cache", {text("x")}); }), 424);
  EXPECT_EQ(error_of([&] { call("Show_HostList", std::vector<Value>(9)); }), 424);
  EXPECT_EQ(text_of("ReStr", {text("a b")}), "ab") << "which asks nothing of the page";
}

TEST_F(SiteMainObject, StartsWithAScriptingContextOnly) {
  EXPECT_EQ(error_of([&] { call("OnStartPage", {text("x")}); }), 424);
  EXPECT_EQ(error_of([&] { call("OnStartPage", {Value::nothing()}); }), 424);
  EXPECT_EQ(error_of([&] { call("OnStartPage", {Value::object(object)}); }), 438);
}

TEST_F(SiteMainObject, FetchesWithFiftySecondsAPhase) {
  fakes.http->answers = {"\xD6\xD0"};
  EXPECT_EQ(text_of("GetURL", {text("http://a/")}), "中");
  EXPECT_EQ(fakes.http->last_timeouts.connect, std::chrono::milliseconds(50000));
  EXPECT_EQ(text_of("GetURL", {text("http://a/")}), "0119");
}

TEST_F(SiteMainObject, DecodesBytes) {
  const std::string bytes =
      "A\xC4\xE3"
      "B";
  EXPECT_EQ(text_of("bytes2bstr", {Value::array(Array::of_bytes(bytes))}), "A你B");
}

TEST_F(SiteMainObject, AsksWithTheAddressesOfTheDeployment) {
  fakes.deployment.endpoints.hichina = "http://api";
  fakes.deployment.endpoints.filing = "http://filing";
  EXPECT_TRUE(text_of("getapiurl", {text("netcn")}).starts_with("http://api/wwwnetcn.aspx?"));
  start();
  EXPECT_EQ(text_of("Getbeian", {text("1"), text("a.example")}), "2");
  EXPECT_EQ(fakes.http->addresses.at(0), "http://filing/chaxun/ggcx.jsp");
}

TEST_F(SiteMainObject, LetsGoOfThePageWhenItEnds) {
  start();
  EXPECT_EQ(text_of("GetTempPath", {}), "/Template/blue/");
  call("OnEndPage", {});
  EXPECT_EQ(error_of([&] { call("GetTempPath", {}); }), 424);
}

}  // namespace
}  // namespace rk::classes
