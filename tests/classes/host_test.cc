#include "classes/host.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "tests/support/fake_page.h"
#include "tests/support/made_object.h"
#include "value/array.h"
#include "value/conversions.h"

namespace rk::classes {
namespace {

using tests::error_of;
using tests::FakePage;

Value text(std::string_view utf8) {
  return Value::text(utf8);
}

class HostObject : public tests::MadeObject {
 protected:
  HostObject() : MadeObject("rkclient.host") {}
};

TEST_F(HostObject, IsMadeByItsProgramIdentifier) {
  ASSERT_TRUE(object);
  EXPECT_EQ(object->type_name(), "Host");
}

TEST_F(HostObject, EveryOperationIsDocumented) {
  std::ifstream file(RK_SOURCE_DIR "/docs/services.md");
  const std::string manual{std::istreambuf_iterator<char>(file), {}};
  for (const auto& row : Host::operations()) {
    const std::string heading = std::string("\n### `").append(row.name).append("(");
    EXPECT_NE(manual.find(heading), std::string::npos) << row.name;
  }
}

TEST_F(HostObject, TakesTheFiveObjectsOfItsPageInTheirOrder) {
  page.scripting->taken.clear();
  start();
  EXPECT_EQ(page.scripting->taken,
            (std::vector<std::string>{"Response", "Server", "Request", "Application", "Session"}));
}

TEST_F(HostObject, StartsWithAScriptingContextOnly) {
  EXPECT_EQ(error_of([&] { call("OnStartPage", {text("x")}); }), 424);
  EXPECT_EQ(error_of([&] { call("OnStartPage", {Value::nothing()}); }), 424);
  EXPECT_EQ(error_of([&] { call("OnStartPage", {Value::object(object)}); }), 438);
}

TEST_F(HostObject, SendsACommandAndReturnsTheReply) {
  fakes.network->arrivals = {{std::chrono::milliseconds(5), "done"}};
  EXPECT_TRUE(call("Init", {text("10.0.0.1"), text("8000"), text("pw1")}).is_empty());
  EXPECT_EQ(text_of("ReturnText", {text("abc")}), "done");
  EXPECT_EQ(fakes.network->log.at(1), "send abc,pw1~with~Rkclient1.0.0");
}

TEST_F(HostObject, ConnectedByHandItSendsWithoutWaiting) {
  fakes.network->connects_at.reset();
  fakes.network->arrivals = {{std::chrono::milliseconds(5), "done"}};
  call("Init", {text("10.0.0.1"), text("8000"), text("pw1")});
  call("wskEm_Connect", {});
  EXPECT_EQ(text_of("ReturnText", {text("abc")}), "done");
}

TEST_F(HostObject, DataWithoutASocketRaises91) {
  EXPECT_EQ(error_of([&] { call("wskEm_DataArrival", {Value::long_integer(4)}); }), 91);
}

TEST_F(HostObject, FetchesWithTheLayersOwnTimes) {
  fakes.http->answers = {"\xD6\xD0"};
  EXPECT_EQ(text_of("GetURL", {text("http://a/")}), "中");
  EXPECT_FALSE(fakes.http->last_timeouts.connect.has_value());
  EXPECT_EQ(text_of("GetURL", {text("http://a/")}), "0119");
}

TEST_F(HostObject, CodesTextsAndCutsThem) {
  const Value bytes = Value::array(Array::of_bytes("A\xC4\xE3"));
  EXPECT_EQ(text_of("bytes2bstr", {bytes}), "A你");
  EXPECT_EQ(text_of("URLEncodetoUTF8", {text("a b")}), "a%20b");
  EXPECT_EQ(text_of("GetKey", {text("x[a]y[b]"), text("["), text("]")}), "a");
  EXPECT_TRUE(call("GetKey", {text("x"), text("["), text("]")}).is_empty());
}

TEST_F(HostObject, AsksTheRegistrarOfTheDeployment) {
  fakes.http->answers = {"free"};
  fakes.deployment.endpoints.availability = "http://registrar";
  EXPECT_EQ(text_of("chDomainReg", {text("a.example")}), "free");
  EXPECT_TRUE(fakes.http->addresses.at(0).starts_with(
      "http://registrar/cgi-bin/check_muitl.cgi?domain=a.example&rktemstr="));
}

TEST_F(HostObject, WritesTheLogOfTheDay) {
  start();
  EXPECT_TRUE(call("writelog", {text("a")}).is_empty());
  EXPECT_EQ(fakes.log->read("/site/log/2023-03-15.log"),
            "2023-03-15 12:00:00                  a\r\n");
}

TEST_F(HostObject, WithoutAPageALogLineIsLostSilently) {
  EXPECT_TRUE(call("writelog", {text("a")}).is_empty());
  start();
  call("OnEndPage", {});
  EXPECT_TRUE(call("writelog", {text("a")}).is_empty());
  EXPECT_FALSE(fakes.log->find("/site/log/2023-03-15.log").has_value());
}

TEST_F(HostObject, MailpassAssignsToTheCallersVariable) {
  Value input = text("one");
  Value* arguments[] = {&input};
  const Value result = object->invoke(object->member("mailpass"), CallKind::Get, arguments);
  EXPECT_EQ(result.as_view(), "98ecf8427e");
  EXPECT_EQ(input.as_view(), "98ecf8427e");
}

}  // namespace
}  // namespace rk::classes
