#include "pagehost/components/http_request_object.h"

#include <gtest/gtest.h>

#include <variant>
#include <vector>

#include "adapters/xml/documents.h"
#include "tests/support/memory_files.h"
#include "tests/support/object_calls.h"
#include "tests/support/toy_code_pages.h"
#include "value/array.h"

namespace rk::pagehost {
namespace {

using platform::HttpAnswer;
using platform::HttpFailure;
using tests::error_number;
using tests::get;
using tests::let;
using tests::text_of;

// Gives its answers in turn, and keeps what was sent.
class ScriptedClient final : public platform::HttpClient {
 public:
  std::variant<HttpAnswer, HttpFailure> send(const platform::HttpRequest& request) override {
    sent.push_back(request);
    if (answers.empty()) return HttpFailure::NotConnected;
    auto next = answers.front();
    answers.erase(answers.begin());
    return next;
  }
  std::vector<std::variant<HttpAnswer, HttpFailure>> answers;
  std::vector<platform::HttpRequest> sent;
};

class HttpRequestTest : public ::testing::Test {
 protected:
  HttpRequestTest() { xml::start_xml(); }
  static Value t(std::string_view text) { return Value::text(text); }
  static Value n(std::int32_t number) { return Value::long_integer(number); }
  Value request(HttpFlavour flavour = HttpFlavour::Xml) {
    const FileSystem system{&files_, &pages_, platform::kGb2312};
    const XmlServices services{&xml_, system, "/site", client_};
    return Value::object(make_ref<HttpRequestObject>(flavour, services));
  }
  Value answered(HttpAnswer answer, HttpFlavour flavour = HttpFlavour::Xml) {
    client_->answers.emplace_back(std::move(answer));
    Value made = request(flavour);
    get(made, "open", {t("get"), t("http://a.example/"), Value::boolean(false)});
    get(made, "send");
    return made;
  }
  xml::Documents xml_;
  tests::MemoryFiles files_;
  tests::ToyCodePages pages_;
  std::shared_ptr<ScriptedClient> client_ = std::make_shared<ScriptedClient>();
};

TEST_F(HttpRequestTest, AnAnswerHasItsStatusHeadersAndBody) {
  const Value made = answered({404, "Not Found", {{"X-A", "1"}, {"X-a", "2"}, {"B", "3"}}, "body"});
  EXPECT_EQ(get(made, "status").as_long(), 404);
  EXPECT_EQ(text_of(get(made, "statusText")), "Not Found");
  EXPECT_EQ(get(made, "readyState").as_long(), 4);
  EXPECT_EQ(text_of(get(made, "getResponseHeader", {t("x-A")})), "1, 2");
  EXPECT_EQ(text_of(get(made, "getResponseHeader", {t("none")})), "");
  EXPECT_EQ(text_of(get(made, "getAllResponseHeaders")), "X-A: 1\r\nX-a: 2\r\nB: 3\r\n\r\n");
  EXPECT_EQ(text_of(get(made, "responseText")), "body");
  EXPECT_EQ(get(made, "responseBody").as_array().bytes(), "body");
  EXPECT_EQ(get(get(made, "responseStream"), "Read").as_array().bytes(), "body");
  EXPECT_EQ(client_->sent.at(0).method, "GET");
}

TEST_F(HttpRequestTest, TheTextIsReadByTheMarkOrTheCharset) {
  const std::string chinese = "\xE4\xB8\xAD";
  const auto text = [&](std::string type, std::string body) {
    return text_of(get(answered({200, "OK", {{"Content-Type", std::move(type)}}, std::move(body)}),
                       "responseText"));
  };
  EXPECT_EQ(text("text/html", chinese), chinese);
  EXPECT_EQ(text("text/html; Charset=\"GB2312\"; x=y", "\xD6\xD0"), chinese);
  EXPECT_EQ(text("text/html; charset=gb2312", "\xEF\xBB\xBF" + chinese), chinese);
  EXPECT_EQ(text("text/plain", std::string("\xFF\xFE\x2D\x4E", 4)), chinese);
  EXPECT_EQ(text("text/plain; charset=unknown", "x"), "x");
}

TEST_F(HttpRequestTest, XmlIsReadWhereTheAnswerIsXml) {
  const Value made = answered({200, "OK", {}, "<a><b>1</b></a>"});
  const Value document = get(made, "responseXML");
  EXPECT_EQ(text_of(get(get(document, "documentElement"), "text")), "1");
  EXPECT_EQ(document.as_object(), get(made, "responseXML").as_object());
  const Value none = answered({200, "OK", {}, "no xml"});
  EXPECT_EQ(get(get(none, "responseXML"), "documentElement").as_object(), nullptr);
}

TEST_F(HttpRequestTest, TextsGoOutAsUtf8AndBytesAsTheyAre) {
  const Value made = request();
  get(made, "open", {t("POST"), t("http://a.example/"), Value::boolean(true)});
  get(made, "send", {t("\xE4\xB8\xAD")});
  get(made, "open", {t("POST"), t("http://a.example/"), Value::boolean(true)});
  get(made, "setRequestHeader", {t("Content-Type"), t("a/b")});
  get(made, "send", {Value::array(Array::of_bytes(std::string("\0\xFF", 2)))});
  EXPECT_EQ(client_->sent.at(0).body, "\xE4\xB8\xAD");
  EXPECT_EQ(client_->sent.at(0).headers.at(0).second, "text/plain; charset=utf-8");
  EXPECT_EQ(client_->sent.at(1).body, std::string("\0\xFF", 2));
  EXPECT_EQ(client_->sent.at(1).headers.size(), 1u);
}

TEST_F(HttpRequestTest, AFailureIsRaisedBySendOrLaterWhereItIsAsynchronous) {
  const Value made = request();
  get(made, "open", {t("GET"), t("http://a.example/"), Value::boolean(false)});
  EXPECT_EQ(error_number([&] { get(made, "send"); }), -2147012867);
  get(made, "open", {t("GET"), t("http://a.example/"), Value::boolean(true)});
  client_->answers.emplace_back(HttpFailure::TimedOut);
  EXPECT_EQ(error_number([&] { get(made, "send"); }), 0);
  EXPECT_EQ(error_number([&] { get(made, "waitForResponse", {n(5)}); }), -2147012894);
  EXPECT_EQ(error_number([&] { get(made, "status"); }), -2147012894);
}

TEST_F(HttpRequestTest, EachFailureHasItsNumberInBothKinds) {
  const std::pair<HttpFailure, int> failures[] = {
      {HttpFailure::BadAddress, -2147012891},     {HttpFailure::OtherScheme, -2147012890},
      {HttpFailure::NoSuchHost, -2147012889},     {HttpFailure::NotConnected, -2147012867},
      {HttpFailure::BadCertificate, -2147012721}, {HttpFailure::TimedOut, -2147012894},
      {HttpFailure::TooLarge, -2147012695},       {HttpFailure::BadAnswer, -2147012744}};
  for (const HttpFlavour flavour : {HttpFlavour::Xml, HttpFlavour::Plain}) {
    for (const auto& [failure, number] : failures) {
      const Value made = request(flavour);
      get(made, "open", {t("GET"), t("http://a.example/"), Value::boolean(false)});
      client_->answers.emplace_back(failure);
      EXPECT_EQ(error_number([&] { get(made, "send"); }), number);
      EXPECT_EQ(error_number([&] { get(made, "status"); }), number);
      EXPECT_EQ(error_number([&] { get(made, "responseText"); }), number);
      get(made, "open", {t("GET"), t("http://a.example/"), Value::boolean(false)});
      client_->answers.emplace_back(HttpAnswer{200, "OK", {}, "again"});
      get(made, "send");
      EXPECT_EQ(text_of(get(made, "responseText")), "again");
    }
  }
}

TEST_F(HttpRequestTest, AnAsynchronousAnswerIsThereWhenItIsWaitedFor) {
  for (const HttpFlavour flavour : {HttpFlavour::Xml, HttpFlavour::Plain}) {
    const Value made = request(flavour);
    get(made, "open", {t("GET"), t("http://a.example/"), Value::boolean(true)});
    EXPECT_FALSE(get(made, "waitForResponse").as_boolean()) << "nothing was sent";
    client_->answers.emplace_back(HttpAnswer{204, "No Content", {}, ""});
    get(made, "send");
    EXPECT_TRUE(get(made, "waitForResponse", {n(1)}).as_boolean());
    EXPECT_EQ(get(made, "readyState").as_long(), 4);
    EXPECT_EQ(get(made, "status").as_long(), 204);
    get(made, "abort");
    EXPECT_EQ(get(made, "readyState").as_long(), 0);
    EXPECT_EQ(error_number([&] { get(made, "status"); }), -2147483638);
  }
}

TEST_F(HttpRequestTest, TheStreamOfAnAnswerIsReadAsOne) {
  const Value stream = get(answered({200, "OK", {}, std::string("\0\xFFz", 3)}), "responseStream");
  EXPECT_EQ(get(stream, "Size").as_long(), 3);
  get(stream, "SaveToFile", {t("/site/a.bin"), n(2)});
  EXPECT_EQ(files_.read("/site/a.bin"), std::string("\0\xFFz", 3));
}

TEST_F(HttpRequestTest, ADocumentGoesOutAsItIsSaved) {
  const Value document = get(answered({200, "OK", {}, "<a><b>1</b></a>"}), "responseXML");
  const Value made = request();
  get(made, "open", {t("POST"), t("http://a.example/"), Value::boolean(false)});
  client_->answers.emplace_back(HttpAnswer{200, "OK", {}, ""});
  get(made, "send", {document});
  EXPECT_EQ(client_->sent.back().body, "<a><b>1</b></a>\r\n");
  EXPECT_EQ(client_->sent.back().headers.at(0).second, "text/xml");
}

TEST_F(HttpRequestTest, NothingIsThereBeforeTheRequestIsSent) {
  const Value made = request();
  EXPECT_EQ(error_number([&] { get(made, "send"); }), -2147467259);
  EXPECT_EQ(error_number([&] { get(made, "setRequestHeader", {t("A"), t("b")}); }), -2147467259);
  get(made, "open", {t("GET"), t("http://a.example/")});
  EXPECT_EQ(get(made, "readyState").as_long(), 1);
  EXPECT_EQ(error_number([&] { get(made, "responseText"); }), -2147483638);
}

TEST_F(HttpRequestTest, NothingBreaksOutOfARequestsLines) {
  const Value made = request();
  EXPECT_EQ(error_number([&] { get(made, "open", {t("GET /x\r\n"), t("http://a/")}); }), 5);
  get(made, "open", {t("GET"), t("http://a.example/\r\nX: y z\xE4\xB8\xAD"), Value::boolean(true)});
  EXPECT_EQ(error_number([&] { get(made, "setRequestHeader", {t("A: b\r\nC"), t("d")}); }), 5);
  EXPECT_EQ(error_number([&] { get(made, "setRequestHeader", {t("A"), t("d\r\nE: f")}); }), 5);
  get(made, "setRequestHeader", {t("Content-Length"), t("5")});
  get(made, "setRequestHeader", {t("A"), t("1")});
  get(made, "setRequestHeader", {t("a"), t("2")});
  get(made, "send");
  EXPECT_EQ(client_->sent.at(0).address, "http://a.example/%0D%0AX:%20y%20z%E4%B8%AD");
  EXPECT_EQ(client_->sent.at(0).headers.size(), 1u);
  EXPECT_EQ(client_->sent.at(0).headers.at(0).second, "2");
}

TEST_F(HttpRequestTest, OptionsAndTimeoutsReachTheRequest) {
  const Value made = request(HttpFlavour::Plain);
  get(made, "SetTimeouts", {n(1), n(2), n(3), n(0)});
  let(made, "Option", {n(6), Value::boolean(false)});
  get(made, "Open", {t("GET"), t("https://a.example/")});
  let(made, "Option", {n(4), n(13056)});
  let(made, "Option", {n(0), t("me")});
  get(made, "SetCredentials", {t("ann"), t("secret"), n(0)});
  client_->answers.emplace_back(HttpAnswer{200, "OK", {}, ""});
  get(made, "Send");
  const platform::HttpRequest& sent = client_->sent.at(0);
  EXPECT_FALSE(sent.follow_redirects);
  EXPECT_FALSE(sent.check_certificate);
  EXPECT_EQ(sent.user_agent, "me");
  EXPECT_EQ(sent.user, "ann");
  EXPECT_EQ(sent.timeouts.send, std::chrono::milliseconds(3));
  EXPECT_FALSE(sent.timeouts.receive.has_value());
  EXPECT_EQ(error_number([&] { get(made, "GetResponseHeader", {t("none")}); }), -2147012746);
}

}  // namespace
}  // namespace rk::pagehost
