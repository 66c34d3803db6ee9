#include "adapters/posix/sockets.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <string>

#include "platform/page.h"
#include "value/script_error.h"

namespace rk::posix {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kEnough{5000};
constexpr milliseconds kShort{1};

// A listening socket on a free loopback port; the test plays the server on its own thread, as the
// kernel completes connections and keeps bytes by itself.
class LoopbackServer {
 public:
  LoopbackServer() : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // Ports are signed numbers of 16 bits to the client, so a low one is looked for.
    for (std::uint16_t port = 20000; port < 32000; ++port) {
      address.sin_port = htons(port);
      if (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0) {
        port_ = static_cast<std::int16_t>(port);
        break;
      }
    }
    ::listen(listener_, 1);
  }
  ~LoopbackServer() {
    hang_up();
    ::close(listener_);
  }

  std::int16_t port() const { return port_; }
  void accept() { peer_ = ::accept(listener_, nullptr, nullptr); }
  void send(std::string_view bytes) {
    EXPECT_EQ(::send(peer_, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
  }
  std::string received() {
    char bytes[256];
    const ssize_t size = ::recv(peer_, bytes, sizeof bytes, 0);
    return std::string(bytes, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  }
  void hang_up() {
    if (peer_ >= 0) ::close(peer_);
    peer_ = -1;
  }

 private:
  int listener_;
  int peer_ = -1;
  std::int16_t port_ = 0;
};

class SocketsTest : public ::testing::Test {
 protected:
  void connect(std::string_view host = "127.0.0.1") {
    socket->connect(host, server.port());
    ASSERT_TRUE(socket->wait_connected(kEnough));
    server.accept();
  }

  LoopbackServer server;
  bool page_ended = false;
  Sockets sockets{[this] {
    if (page_ended) throw platform::PageEnd{platform::PageEnd::Reason::TimedOut};
  }};
  std::unique_ptr<platform::Socket> socket = sockets.socket();
};

TEST_F(SocketsTest, CarriesBytesBothWays) {
  connect();
  socket->send("abc,pw1~with~");
  EXPECT_EQ(server.received(), "abc,pw1~with~");
  server.send("done");
  EXPECT_EQ(socket->receive(10240, kEnough), "done");
}

TEST_F(SocketsTest, ConnectsByName) {
  connect("localhost");
}

TEST_F(SocketsTest, ConnectsByIpv6) {
  const int listener = ::socket(AF_INET6, SOCK_STREAM, 0);
  sockaddr_in6 address{};
  address.sin6_family = AF_INET6;
  address.sin6_addr = in6addr_loopback;
  address.sin6_port = htons(static_cast<std::uint16_t>(server.port()));
  if (::bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    ::close(listener);
    GTEST_SKIP() << "this machine has no IPv6";
  }
  ::listen(listener, 1);
  socket->connect("::1", server.port());
  EXPECT_TRUE(socket->wait_connected(kEnough));
  ::close(listener);
}

TEST_F(SocketsTest, TakesNoMoreThanTheLimitOfOneArrival) {
  connect();
  server.send("0123456789");
  EXPECT_EQ(socket->receive(4, kEnough), "0123");
}

TEST_F(SocketsTest, ASilentServerBringsNothing) {
  connect();
  EXPECT_FALSE(socket->receive(10240, kShort).has_value());
}

TEST_F(SocketsTest, ALostConnectionBringsNothing) {
  connect();
  server.hang_up();
  EXPECT_FALSE(socket->receive(10240, kShort).has_value());
}

TEST_F(SocketsTest, ARefusedConnectionIsOnlyNoConnection) {
  socket->connect("127.0.0.1", 1);
  EXPECT_FALSE(socket->wait_connected(kShort));
}

TEST_F(SocketsTest, ANameThatNobodyHasIsOnlyNoConnection) {
  socket->connect("no.such.host.invalid", 80);
  EXPECT_FALSE(socket->wait_connected(kShort));
}

TEST_F(SocketsTest, SendingWithoutAConnectionRaises) {
  socket->connect("127.0.0.1", 1);
  EXPECT_THROW(socket->send("x"), ScriptError);
}

TEST_F(SocketsTest, AMessageThatNobodyWaitedWithGoesOutWhenTheServerTakesItAtOnce) {
  socket->connect("127.0.0.1", server.port());
  socket->send("abc");
  server.accept();
  EXPECT_EQ(server.received(), "abc");
}

TEST_F(SocketsTest, AConnectionLostBeforeTheMessageIsOnlySilence) {
  connect();
  server.hang_up();
  EXPECT_NO_THROW(socket->send("one"));
  EXPECT_NO_THROW(socket->send("two"));  // the first was answered by a reset
  EXPECT_FALSE(socket->receive(10240, kShort).has_value());
}

TEST_F(SocketsTest, SendingBeforeConnectRaises) {
  EXPECT_THROW(socket->send("x"), ScriptError);
}

TEST_F(SocketsTest, APortThatIsNoneRaisesAtOnce) {
  EXPECT_THROW(socket->connect("127.0.0.1", -5), ScriptError);
}

TEST_F(SocketsTest, AWaitEndsWithThePage) {
  connect();
  page_ended = true;
  EXPECT_THROW(socket->receive(10240, kEnough), platform::PageEnd);
}

}  // namespace
}  // namespace rk::posix
