// Replies of a control server, in pieces as they arrive: the first that is not empty is the answer,
// cut at 10240 bytes, and whatever it holds there is a text.
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "adapters/codepage/code_pages.h"
#include "services/control_client.h"

namespace {

constexpr std::size_t kReplyBytes = 10240;

// Pieces out of the input, each behind a byte that says how long it is; a wait takes its time.
class Network final : public rk::platform::Sockets, public rk::platform::Clock {
 public:
  explicit Network(std::string_view input) : input_(input) {}
  std::unique_ptr<rk::platform::Socket> socket() override { return std::make_unique<Line>(*this); }
  double now() const override { return 0; }
  std::chrono::steady_clock::time_point steady() const override { return time_; }

  std::optional<std::string> next(std::size_t limit, std::chrono::milliseconds longest) {
    time_ += longest;
    if (input_.empty()) return std::nullopt;
    const std::size_t size = static_cast<unsigned char>(input_.front()) * std::size_t{64};
    input_.remove_prefix(1);
    const std::string piece(input_.substr(0, size));
    input_.remove_prefix(piece.size());
    return piece.substr(0, limit);
  }

 private:
  class Line final : public rk::platform::Socket {
   public:
    explicit Line(Network& network) : network_(network) {}
    void connect(std::string_view, std::int16_t) override {}
    bool wait_connected(std::chrono::milliseconds) override { return true; }
    void send(std::string_view) override {}
    std::optional<std::string> receive(std::size_t limit,
                                       std::chrono::milliseconds longest) override {
      if (limit != kReplyBytes) std::abort();
      return network_.next(limit, longest);
    }
    void close() override {}

   private:
    Network& network_;
  };

  std::string_view input_;
  std::chrono::steady_clock::time_point time_{};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const rk::codepage::IcuCodePages code_pages;
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  Network network(input);
  rk::services::ControlClient client({network, network, code_pages, rk::platform::kGb2312}, "R");
  client.Init(rk::Value::text("h"), rk::Value::integer(1), rk::Value::text("p"));
  const rk::Value reply = client.ReturnText(rk::Value::text(input));
  if (!reply.is_text() || reply.as_view().empty()) std::abort();
  if (!rk::is_valid_utf8(reply.as_view())) std::abort();
  if (reply.as_text().length() > kReplyBytes) std::abort();
  return 0;
}
