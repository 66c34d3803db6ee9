// A visitor of a front under test, with a socket of its own. One thread at a time.
//
// What goes wrong ends in a failed test, not in waiting: a read has a limit.
#ifndef RK_TESTS_PAGEHOST_HTTP_VISITOR_H_
#define RK_TESTS_PAGEHOST_HTTP_VISITOR_H_

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace rk::http {

class Visitor {
 public:
  explicit Visitor(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connected_ = ::connect(socket_, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0;
    const timeval patience{20, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof patience);
  }
  ~Visitor() { ::close(socket_); }
  Visitor(const Visitor&) = delete;
  Visitor& operator=(const Visitor&) = delete;

  bool connected() const { return connected_; }
  void send(std::string_view bytes) {
    ASSERT_EQ(::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL),
              static_cast<ssize_t>(bytes.size()));
  }
  // False where the other end takes no more.
  bool try_send(std::string_view bytes) {
    return ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL) ==
           static_cast<ssize_t>(bytes.size());
  }
  // Each piece goes out by itself from here on.
  void send_at_once() {
    const int on = 1;
    ::setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  }
  void finish_sending() { ::shutdown(socket_, SHUT_WR); }
  // All until the other end closes.
  std::string read_all() {
    std::string all;
    while (read_some(all)) {
    }
    return all;
  }
  std::string read_until(std::string_view mark) {
    std::string all;
    while (all.find(mark) == std::string::npos && read_some(all)) {
    }
    return all;
  }

 private:
  bool read_some(std::string& all) {
    char bytes[65536];
    const ssize_t count = ::recv(socket_, bytes, sizeof bytes, 0);
    if (count > 0) all.append(bytes, static_cast<std::size_t>(count));
    return count > 0;
  }

  int socket_;
  bool connected_ = false;
};

}  // namespace rk::http

#endif  // RK_TESTS_PAGEHOST_HTTP_VISITOR_H_
