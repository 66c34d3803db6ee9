// A clock that only waiting moves, and sockets whose events have their times.
#ifndef RK_TESTS_SUPPORT_SCRIPTED_NETWORK_H_
#define RK_TESTS_SUPPORT_SCRIPTED_NETWORK_H_

#include <algorithm>
#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/clock.h"
#include "platform/sockets.h"

namespace rk::tests {

class ScriptedNetwork final : public platform::Sockets, public platform::Clock {
 public:
  std::unique_ptr<platform::Socket> socket() override { return std::make_unique<Line>(*this); }
  double now() const override { return 45000; }
  std::chrono::steady_clock::time_point steady() const override { return time; }

  // Since the first command's start; none: never.
  std::optional<std::chrono::milliseconds> connects_at = std::chrono::milliseconds(0);
  std::vector<std::pair<std::chrono::milliseconds, std::string>> arrivals;
  std::vector<std::string> log;
  std::chrono::steady_clock::time_point time{};

 private:
  class Line final : public platform::Socket {
   public:
    explicit Line(ScriptedNetwork& network) : network_(network) {}
    ~Line() override { network_.log.push_back("released"); }
    void connect(std::string_view host, std::int16_t port) override {
      network_.log.push_back("connect " + std::string(host) + " " + std::to_string(port));
    }
    bool wait_connected(std::chrono::milliseconds longest) override {
      return network_.wait_until(network_.connects_at, longest);
    }
    void send(std::string_view bytes) override {
      network_.log.push_back("send " + std::string(bytes));
    }
    std::optional<std::string> receive(std::size_t limit,
                                       std::chrono::milliseconds longest) override {
      if (network_.arrivals.empty()) {
        network_.time += longest;
        return std::nullopt;
      }
      if (!network_.wait_until(network_.arrivals.front().first, longest)) return std::nullopt;
      const std::string bytes = network_.arrivals.front().second.substr(0, limit);
      network_.arrivals.erase(network_.arrivals.begin());
      return bytes;
    }
    void close() override { network_.log.push_back("close"); }

   private:
    ScriptedNetwork& network_;
  };

  bool wait_until(std::optional<std::chrono::milliseconds> event,
                  std::chrono::milliseconds longest) {
    const auto at =
        std::chrono::steady_clock::time_point() + event.value_or(std::chrono::hours(1000));
    if (at > time + longest) {
      time += longest;
      return false;
    }
    time = std::max(time, at);
    return true;
  }
};

}  // namespace rk::tests

#endif  // RK_TESTS_SUPPORT_SCRIPTED_NETWORK_H_
