#include "adapters/posix/sockets.h"

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <condition_variable>
#include <cstring>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>
#include <vector>

#include "value/script_error.h"

namespace rk::posix {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// Between two looks at whether the page is still running.
constexpr milliseconds kSlice{100};
// What a message that nobody waited for leaves a connection to come about.
constexpr milliseconds kMoment{500};

struct Address {
  int family;
  sockaddr_storage storage;
  socklen_t size;
};

std::vector<Address> addresses_of(const std::string& host, const std::string& port, int flags) {
  addrinfo hints{};
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_NUMERICSERV | flags;
  addrinfo* found = nullptr;
  if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) return {};
  std::vector<Address> addresses;
  for (const addrinfo* at = found; at != nullptr; at = at->ai_next) {
    Address address{at->ai_family, {}, at->ai_addrlen};
    std::memcpy(&address.storage, at->ai_addr, at->ai_addrlen);
    addresses.push_back(address);
  }
  ::freeaddrinfo(found);
  return addresses;
}

// The answer of a name server, shared by the page and the thread that asks.
class Resolution {
 public:
  static std::shared_ptr<Resolution> begin(std::string host, std::string port) {
    auto resolution = std::make_shared<Resolution>();
    std::thread([resolution, host = std::move(host), port = std::move(port)] {
      std::vector<Address> addresses = addresses_of(host, port, 0);
      const std::lock_guard lock(resolution->mutex_);
      resolution->addresses_ = std::move(addresses);
      resolution->done_.notify_all();
    }).detach();
    return resolution;
  }

  std::optional<std::vector<Address>> wait(milliseconds longest) {
    std::unique_lock lock(mutex_);
    done_.wait_for(lock, longest, [this] { return addresses_.has_value(); });
    return addresses_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable done_;
  std::optional<std::vector<Address>> addresses_;
};

class TcpSocket final : public platform::Socket {
 public:
  explicit TcpSocket(std::function<void()> still_running)
      : still_running_(std::move(still_running)) {}
  ~TcpSocket() override { drop(); }

  void connect(std::string_view host, std::int16_t port) override {
    if (port <= 0) raise(errors::kInvalidPropertyValue);
    const std::string name(host);
    const std::string number = std::to_string(port);
    std::vector<Address> given = addresses_of(name, number, AI_NUMERICHOST);
    if (given.empty()) {
      resolution_ = Resolution::begin(name, number);
    } else {
      addresses_ = std::move(given);  // needs no name server
      begin_next_address();
    }
  }

  bool wait_connected(milliseconds longest) override {
    const auto deadline = steady_clock::now() + longest;
    while (!connected_) {
      still_running_();
      const auto left = left_until(deadline);
      if (left <= milliseconds::zero()) return false;
      look_for_connection(left);
    }
    return true;
  }

  void send(std::string_view bytes) override {
    require_connection();
    while (!bytes.empty()) {
      const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent >= 0) {
        bytes.remove_prefix(static_cast<std::size_t>(sent));
      } else if (errno == EAGAIN || errno == EINTR) {
        still_running_();
        wait_for(POLLOUT, kSlice);
      } else {
        return drop();  // lost, which shows only as an answer that never comes
      }
    }
  }

  std::optional<std::string> receive(std::size_t limit, milliseconds longest) override {
    const auto deadline = steady_clock::now() + longest;
    while (true) {
      still_running_();
      const auto left = left_until(deadline);
      if (left <= milliseconds::zero()) return std::nullopt;
      if (wait_for(POLLIN, left)) {
        if (auto bytes = arrived(limit)) return bytes;
      }
    }
  }

  void close() override { drop(); }

 private:
  static milliseconds left_until(steady_clock::time_point deadline) {
    const auto left = std::chrono::ceil<milliseconds>(deadline - steady_clock::now());
    return std::min(left, kSlice);
  }

  void drop() {
    if (descriptor_ >= 0) ::close(descriptor_);
    descriptor_ = -1;
    connected_ = false;
  }

  // The object may send without having waited: a connection that is on its way gets a moment.
  void require_connection() {
    const auto deadline = steady_clock::now() + kMoment;
    while (!connected_) {
      still_running_();
      const auto left = left_until(deadline);
      if (left <= milliseconds::zero() || nobody_answers()) {
        raise(errors::kNotConnected);
      }
      look_for_connection(left);
    }
  }

  // No connection is asked for, or no address is left to try.
  bool nobody_answers() const {
    if (!addresses_) return resolution_ == nullptr;
    return descriptor_ < 0 && next_address_ >= addresses_->size();
  }

  void look_for_connection(milliseconds left) {
    if (!addresses_) {
      addresses_ = resolution_->wait(left);
      if (!addresses_) return;
    }
    if (descriptor_ < 0 && !begin_next_address()) {
      std::this_thread::sleep_for(left);  // nobody answers there: the wait runs out
      return;
    }
    if (!wait_for(POLLOUT, left)) return;
    int error = 0;
    socklen_t size = sizeof error;
    ::getsockopt(descriptor_, SOL_SOCKET, SO_ERROR, &error, &size);
    // A server that took the connection and reset it was there; one that refuses is not.
    if (error == 0 || error == ECONNRESET) {
      connected_ = true;
    } else {
      drop();
    }
  }

  bool begin_next_address() {
    while (next_address_ < addresses_->size()) {
      const Address& address = (*addresses_)[next_address_++];
      descriptor_ = ::socket(address.family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
      if (descriptor_ < 0) continue;
      const auto* storage = reinterpret_cast<const sockaddr*>(&address.storage);
      if (::connect(descriptor_, storage, address.size) == 0 || errno == EINPROGRESS) return true;
      drop();
    }
    return false;
  }

  bool wait_for(short events, milliseconds longest) {
    if (descriptor_ < 0) {
      std::this_thread::sleep_for(longest);
      return false;
    }
    pollfd look{descriptor_, events, 0};
    return ::poll(&look, 1, static_cast<int>(longest.count())) > 0;
  }

  // A connection that the other side ended brings nothing more.
  std::optional<std::string> arrived(std::size_t limit) {
    std::string bytes(limit, '\0');
    const ssize_t size = ::recv(descriptor_, bytes.data(), bytes.size(), 0);
    if (size > 0) {
      bytes.resize(static_cast<std::size_t>(size));
      return bytes;
    }
    if (size == 0 || (errno != EAGAIN && errno != EINTR)) drop();
    return std::nullopt;
  }

  std::function<void()> still_running_;
  std::shared_ptr<Resolution> resolution_;
  std::optional<std::vector<Address>> addresses_;
  std::size_t next_address_ = 0;
  int descriptor_ = -1;
  bool connected_ = false;
};

}  // namespace

std::unique_ptr<platform::Socket> Sockets::socket() {
  return std::make_unique<TcpSocket>(still_running_);
}

}  // namespace rk::posix
