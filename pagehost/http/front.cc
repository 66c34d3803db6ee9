#include "pagehost/http/front.h"

#include <sys/socket.h>

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/signal_set.hpp>
#include <boost/asio/steady_timer.hpp>
#include <cerrno>
#include <csignal>
#include <vector>

#include "pagehost/http/connection.h"

namespace rk::http {
namespace {

namespace net = boost::asio;
using boost::system::error_code;
using net::ip::tcp;
using SteadyClock = std::chrono::steady_clock;

// How often deadlines are looked at; they are kept to this much.
constexpr std::chrono::milliseconds kSweep{100};
// After stop_time: for the answers of pages that were ended.
constexpr std::chrono::seconds kLastAnswers{5};
// The longest that the event loop lets answers and requests gather while pages queue: several of
// each by then, and little beside what a request waits in such a queue.
constexpr std::chrono::microseconds kRound{500};
// Pages that wait in such a queue at least: with fewer of them the threads would run dry meanwhile.
constexpr std::size_t kQueueOfRounds = 6;
// Connections taken in a row before others have their turn.
constexpr int kAcceptsInARow = 64;

class SessionSweep final : public PageTask {
 public:
  SessionSweep(Pages& pages, pagehost::Log& log) : pages_(pages), log_(log) {}
  void run() noexcept override {
    try {
      pages_.sweep_sessions();
    } catch (const std::exception& failure) {
      log_.error(failure.what());
    }
  }

 private:
  Pages& pages_;
  pagehost::Log& log_;
};

}  // namespace

// The listener and the clockwork of the front.
class Front::Server {
 public:
  Server(FrontOptions options, FrontParts parts)
      : hub_(io_, std::move(options), parts),
        acceptor_(io_),
        retry_(io_),
        sweep_(io_),
        session_sweep_(io_),
        stop_(io_),
        signals_(io_) {
    hub_.on_closed = [this] { connection_closed(); };
  }

  // The pool's threads first: what they run holds connections.
  ~Server() {
    hub_.pool.reset();
    hub_.connections.clear();
  }

  std::uint16_t open();
  void run();
  void stop() {
    net::post(io_, [this] { begin_stop(); });
  }

 private:
  void serve_in_rounds();
  void accept();
  bool take_next();
  void connection_closed();
  void sweep();
  void sweep_sessions();
  void await_signal();
  void begin_stop();
  void break_off_all();

  net::io_context io_{1};
  Hub hub_;
  tcp::acceptor acceptor_;
  net::steady_timer retry_;
  net::steady_timer sweep_;
  net::steady_timer session_sweep_;
  net::steady_timer stop_;
  net::signal_set signals_;
  bool accepting_ = false;
  bool v6_ = false;
};

std::uint16_t Front::Server::open() {
  const tcp::endpoint endpoint(net::ip::make_address(hub_.options.host), hub_.options.port);
  error_code error;
  acceptor_.open(endpoint.protocol(), error);
  if (!error) acceptor_.set_option(tcp::acceptor::reuse_address(true), error);
  if (!error) acceptor_.bind(endpoint, error);
  if (!error) acceptor_.listen(net::socket_base::max_listen_connections, error);
  if (error) {
    const bool v6 = endpoint.address().is_v6();
    throw FrontError("cannot serve at " + (v6 ? "[" + hub_.options.host + "]" : hub_.options.host) +
                     ":" + std::to_string(hub_.options.port) + ": " + error.message());
  }
  acceptor_.non_blocking(true);
  v6_ = endpoint.address().is_v6();
  hub_.pool = std::make_unique<PagePool>(hub_.options.pool);
  return acceptor_.local_endpoint().port();
}

void Front::Server::run() {
  if (hub_.options.own_signals) {
    for (const int number : {SIGTERM, SIGINT, SIGHUP}) signals_.add(number);
    await_signal();
  }
  accept();
  sweep();
  sweep_sessions();
  while (io_.run_one() > 0) serve_in_rounds();
}

// OPTIMIZATION: while pages queue, new requests would only queue too, so the loop lets some come,
// and some answers be left, before it turns.
void Front::Server::serve_in_rounds() {
  while (hub_.pool->waiting() >= kQueueOfRounds) {
    hub_.outbox.open();
    hub_.pool->await_empty_queue(kRound);
    const auto left = hub_.outbox.close();
    for (const auto& connection : left) connection->conclude_page();
    if (io_.poll() == 0 && left.empty()) return;  // nothing to do but to wait
  }
}

void Front::Server::await_signal() {
  signals_.async_wait([this](error_code error, int number) {
    if (error) return;
    if (number == SIGHUP) {
      hub_.access_log.reopen();
      if (hub_.options.on_hangup) hub_.options.on_hangup();
    } else if (hub_.stopping.load()) {
      hub_.parts.pages->end_running_pages();  // asked twice: no more patience
    } else {
      begin_stop();
    }
    await_signal();
  });
}

void Front::Server::accept() {
  if (hub_.stopping.load() || hub_.connections.size() >= hub_.options.max_connections) return;
  accepting_ = true;
  acceptor_.async_wait(tcp::acceptor::wait_read, [this](error_code error) {
    accepting_ = false;
    if (error || hub_.stopping.load()) return;
    for (int i = 0; i < kAcceptsInARow; ++i) {
      if (hub_.connections.size() >= hub_.options.max_connections) return;
      if (!take_next()) break;
    }
    if (errno == EAGAIN || errno == 0) return accept();
    // Out of descriptors, as a rule: some time for connections to end.
    retry_.expires_after(kSweep);
    retry_.async_wait([this](error_code cancelled) {
      if (!cancelled && !accepting_) accept();
    });
  });
}

// False where no connection waits, or none can be had, with errno.
bool Front::Server::take_next() {
  errno = 0;
  const int socket =
      ::accept4(acceptor_.native_handle(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK);
  if (socket < 0) return errno == ECONNABORTED || errno == EINTR;
  const auto connection = make_connection(hub_, socket, v6_);
  hub_.connections.insert(connection);
  connection->start();
  errno = 0;
  return true;
}

void Front::Server::connection_closed() {
  if (hub_.stopping.load()) {
    if (hub_.connections.empty()) io_.stop();
  } else if (!accepting_) {
    net::post(io_, [this] {
      if (!accepting_) accept();
    });
  }
}

void Front::Server::sweep() {
  sweep_.expires_after(kSweep);
  sweep_.async_wait([this](error_code cancelled) {
    if (cancelled) return;
    const SteadyClock::time_point now = SteadyClock::now();
    // Meeting a deadline takes connections out of the set.
    std::vector<std::shared_ptr<Connection>> due;
    for (const auto& connection : hub_.connections) {
      if (connection->deadline() <= now) due.push_back(connection);
    }
    for (const auto& connection : due) connection->meet_deadline();
    sweep();
  });
}

void Front::Server::sweep_sessions() {
  session_sweep_.expires_after(hub_.options.session_sweep);
  session_sweep_.async_wait([this](error_code cancelled) {
    if (cancelled) return;
    hub_.pool->submit(std::make_shared<SessionSweep>(*hub_.parts.pages, *hub_.parts.log));
    sweep_sessions();
  });
}

void Front::Server::begin_stop() {
  if (hub_.stopping.load()) return;
  // Connections that the system took for us before we stopped listening are ours to answer.
  while (take_next()) {
  }
  if (hub_.options.on_stop) hub_.options.on_stop();
  hub_.stopped_at = SteadyClock::now();
  hub_.stopping.store(true);
  error_code ignored;
  acceptor_.close(ignored);
  if (hub_.connections.empty()) return io_.stop();
  stop_.expires_after(hub_.options.stop_time);
  stop_.async_wait([this](error_code cancelled) {
    if (cancelled) return;
    hub_.parts.pages->end_running_pages();
    stop_.expires_after(kLastAnswers);
    stop_.async_wait([this](error_code cancelled_too) {
      if (!cancelled_too) break_off_all();
    });
  });
}

void Front::Server::break_off_all() {
  for (const auto& connection : hub_.connections) connection->break_off();
}

Front::Front(FrontOptions options, FrontParts parts)
    : server_(std::make_unique<Server>(std::move(options), parts)) {}
Front::~Front() = default;
std::uint16_t Front::open() {
  return server_->open();
}
void Front::run() {
  server_->run();
}
void Front::stop() {
  server_->stop();
}

}  // namespace rk::http
