#include "adapters/curl/http.h"

#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <string>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include "platform/page.h"

namespace rk::curl {
namespace {

using std::chrono::milliseconds;

// Answers each connection with the next text and hangs up; past the last it takes connections and
// says nothing.
class LoopbackServer {
 public:
  explicit LoopbackServer(std::vector<std::string> answers)
      : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address);
    socklen_t size = sizeof address;
    ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    port_ = ntohs(address.sin_port);
    ::listen(listener_, 8);
    thread_ = std::thread([this, answers = std::move(answers)] { serve(answers); });
  }
  ~LoopbackServer() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }

  std::string address(std::string_view path) const {
    return "http://127.0.0.1:" + std::to_string(port_) + std::string(path);
  }
  std::vector<std::string> requests;

 private:
  void serve(const std::vector<std::string>& answers) {
    for (const std::string& answer : answers) {
      const int peer = ::accept(listener_, nullptr, nullptr);
      if (peer < 0) return;
      char bytes[4096];
      const ssize_t size = ::recv(peer, bytes, sizeof bytes, 0);
      requests.emplace_back(bytes, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
      ::send(peer, answer.data(), answer.size(), MSG_NOSIGNAL);
      ::close(peer);
    }
  }

  int listener_;
  int port_ = 0;
  std::thread thread_;
};

std::string answer(std::string_view status, std::string_view body) {
  return "HTTP/1.1 " + std::string(status) + "\r\nContent-Length: " + std::to_string(body.size()) +
         "\r\nConnection: close\r\n\r\n" + std::string(body);
}

FetchLimits limits() {
  FetchLimits limits;
  limits.time_left = [] { return milliseconds(10000); };
  return limits;
}

TEST(CurlHttp, FetchesABodyWhateverItsStatus) {
  LoopbackServer server({answer("200 OK", "one"), answer("404 Not Found", "no page")});
  CurlHttp http(limits());
  EXPECT_EQ(http.body_of(server.address("/"), {}), "one");
  EXPECT_EQ(http.body_of(server.address("/none"), {}), "no page");
}

TEST(CurlHttp, ABodyOfBytesComesWhole) {
  const std::string bytes("\x00\xC4\xE3\xFF", 4);
  LoopbackServer server({answer("200 OK", bytes)});
  EXPECT_EQ(CurlHttp(limits()).body_of(server.address("/"), {}), bytes);
}

TEST(CurlHttp, ABlankInTheAddressIsSentAsItStands) {
  LoopbackServer server({answer("200 OK", "")});
  CurlHttp(limits()).body_of(server.address("/?domain=a b"), {});
  EXPECT_TRUE(server.requests.at(0).starts_with("GET /?domain=a b HTTP/1.1\r\n"));
}

TEST(CurlHttp, NobodyThereIsNoAnswer) {
  EXPECT_FALSE(CurlHttp(limits()).body_of("http://127.0.0.1:1/", {}).has_value());
  EXPECT_FALSE(CurlHttp(limits()).body_of("http://no.such.host.invalid/", {}).has_value());
}

TEST(CurlHttp, OtherSchemesAreNoAnswer) {
  for (const std::string_view address : {"file:///etc/hostname", "ftp://127.0.0.1/", "", "x"}) {
    EXPECT_FALSE(CurlHttp(limits()).body_of(address, {}).has_value()) << address;
  }
}

TEST(CurlHttp, ARedirectToAnotherSchemeIsNotFollowed) {
  LoopbackServer server(
      {"HTTP/1.1 302 Found\r\nLocation: file:///etc/hostname\r\nContent-Length: 0\r\n\r\n"});
  EXPECT_FALSE(CurlHttp(limits()).body_of(server.address("/"), {}).has_value());
}

TEST(CurlHttp, ABodyPastTheCapIsNoAnswer) {
  LoopbackServer server({answer("200 OK", std::string(101, 'x'))});
  FetchLimits small = limits();
  small.max_body_bytes = 100;
  EXPECT_FALSE(CurlHttp(small).body_of(server.address("/"), {}).has_value());
}

TEST(CurlHttp, AServerThatSaysNothingIsNoAnswerOnceThePhaseIsOver) {
  LoopbackServer server({});
  platform::HttpTimeouts timeouts;
  timeouts.receive = milliseconds(1);
  EXPECT_FALSE(CurlHttp(limits()).body_of(server.address("/"), timeouts).has_value());
}

TEST(CurlHttp, HalfABodyIsNoAnswer) {
  LoopbackServer server({"HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf"});
  EXPECT_FALSE(CurlHttp(limits()).body_of(server.address("/"), {}).has_value());
}

TEST(CurlHttp, ABodyWithoutALengthEndsWithItsConnection) {
  LoopbackServer server({"HTTP/1.0 200 OK\r\n\r\nall of it"});
  EXPECT_EQ(CurlHttp(limits()).body_of(server.address("/"), {}), "all of it");
}

TEST(CurlHttp, ARedirectWithinTheSchemeIsFollowed) {
  LoopbackServer server(
      {"HTTP/1.1 302 Found\r\nLocation: /there\r\nContent-Length: 0\r\n"
       "Connection: close\r\n\r\n",
       answer("200 OK", "there")});
  EXPECT_EQ(CurlHttp(limits()).body_of(server.address("/"), {}), "there");
  EXPECT_TRUE(server.requests.at(1).starts_with("GET /there "));
}

TEST(CurlHttp, APageWithoutTimeFetchesNothing) {
  FetchLimits none = limits();
  none.time_left = [] { return milliseconds(0); };
  LoopbackServer server({});
  EXPECT_FALSE(CurlHttp(none).body_of(server.address("/"), {}).has_value());
  EXPECT_TRUE(server.requests.empty());
}

// What is left runs out while a fetch is set up; asked a second time it could be 0, no limit.
TEST(CurlHttp, WhatIsLeftOfThePageIsAskedOnce) {
  int asked = 0;
  FetchLimits passing = limits();
  passing.time_left = [&asked] { return milliseconds(asked++ == 0 ? 50 : 0); };
  LoopbackServer server({});
  EXPECT_FALSE(CurlHttp(passing).body_of(server.address("/"), {}).has_value());
  EXPECT_EQ(asked, 1);
}

TEST(CurlHttp, AFetchEndsWithThePage) {
  LoopbackServer server({answer("200 OK", "one")});
  FetchLimits ending = limits();
  ending.still_running = [] { throw platform::PageEnd{platform::PageEnd::Reason::TimedOut}; };
  CurlHttp http(ending);
  EXPECT_THROW(http.body_of(server.address("/"), {}), platform::PageEnd);
}

platform::HttpRequest to(const std::string& address) {
  platform::HttpRequest request;
  request.address = address;
  return request;
}

TEST(CurlHttp, AnExchangeHasItsStatusAndHeaders) {
  LoopbackServer server(
      {"HTTP/1.1 302 Found\r\nLocation: /there\r\nX-A: old\r\nContent-Length: 0\r\n"
       "Connection: close\r\n\r\n",
       "HTTP/1.1 404 No Such Page\r\nX-A:  1 \r\nX-A: 2\r\nContent-Length: 4\r\n"
       "Connection: close\r\n\r\nbody"});
  const auto came = CurlHttp(limits()).send(to(server.address("/")));
  const auto& answer = std::get<platform::HttpAnswer>(came);
  EXPECT_EQ(answer.status, 404);
  EXPECT_EQ(answer.reason, "No Such Page");
  EXPECT_EQ(answer.body, "body");
  ASSERT_EQ(answer.headers.size(), 4u);
  EXPECT_EQ(answer.headers[0], std::pair(std::string("X-A"), std::string("1")));
}

TEST(CurlHttp, ABodyIsSentWithTheHeadersOfTheRequestAlone) {
  LoopbackServer server({answer("200 OK", ""), answer("200 OK", "")});
  platform::HttpRequest request = to(server.address("/x"));
  request.method = "POST";
  request.body = std::string("a\0b", 3);
  request.headers = {{"Content-Type", "text/xml"}, {"X-Empty", ""}};
  CurlHttp http(limits());
  http.send(request);
  request.method = "PUT";
  request.headers.clear();
  http.send(request);
  EXPECT_TRUE(server.requests.at(0).starts_with("POST /x HTTP/1.1\r\n"));
  EXPECT_NE(server.requests.at(0).find("Content-Type: text/xml\r\n"), std::string::npos);
  EXPECT_NE(server.requests.at(0).find("X-Empty:\r\n"), std::string::npos);
  EXPECT_TRUE(server.requests.at(0).ends_with(std::string("\r\n\r\na\0b", 7)));
  EXPECT_TRUE(server.requests.at(1).starts_with("PUT /x HTTP/1.1\r\n"));
  EXPECT_EQ(server.requests.at(1).find("Content-Type"), std::string::npos);
}

TEST(CurlHttp, ARedirectIsAnAnswerWhereItIsNotToBeFollowed) {
  LoopbackServer server({"HTTP/1.1 302 Found\r\nLocation: /there\r\nContent-Length: 0\r\n\r\n"});
  platform::HttpRequest request = to(server.address("/"));
  request.follow_redirects = false;
  EXPECT_EQ(std::get<platform::HttpAnswer>(CurlHttp(limits()).send(request)).status, 302);
}

TEST(CurlHttp, FailuresTellTheirKind) {
  const auto failure = [](const std::string& address) {
    const auto came = CurlHttp(limits()).send(to(address));
    const auto* found = std::get_if<platform::HttpFailure>(&came);
    return found == nullptr ? -1 : static_cast<int>(*found);
  };
  using platform::HttpFailure;
  EXPECT_EQ(failure("http://127.0.0.1:1/"), static_cast<int>(HttpFailure::NotConnected));
  EXPECT_EQ(failure("http://no.such.host.invalid/"), static_cast<int>(HttpFailure::NoSuchHost));
  EXPECT_EQ(failure("gopher://127.0.0.1/"), static_cast<int>(HttpFailure::OtherScheme));
  EXPECT_EQ(failure("http://:80/"), static_cast<int>(HttpFailure::BadAddress));
  LoopbackServer server({answer("200 OK", std::string(101, 'x')),
                         "HTTP/1.1 200 OK\r\nX: " + std::string(kMaxHeadBytes, 'x') + "\r\n\r\n"});
  FetchLimits small = limits();
  small.max_body_bytes = 100;
  EXPECT_EQ(std::get<HttpFailure>(CurlHttp(small).send(to(server.address("/")))),
            HttpFailure::TooLarge);
  EXPECT_TRUE(std::holds_alternative<HttpFailure>(CurlHttp(small).send(to(server.address("/")))));
}

}  // namespace
}  // namespace rk::curl
