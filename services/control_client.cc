#include "services/control_client.h"

#include <chrono>
#include <memory>

#include "value/conversions.h"

namespace rk::services {

namespace {

// A wait ends at the first look at which more than so many whole seconds have passed.
constexpr std::chrono::seconds kLongestWait{60};
// How long a wait sleeps in the socket before it looks at the clock again.
constexpr std::chrono::milliseconds kLookInterval{250};
// What one arrival brings at most.
constexpr std::size_t kReplyBytes = 10240;

constexpr std::string_view kConnectionTimedOut = "连接超时";
constexpr std::string_view kReplyTimedOut = "通讯超时";

}  // namespace

void ControlClient::Init(const Value& strServerIP, const Value& intServerPort,
                         const Value& strServerPass) {
  std::string server_ip = to_text(strServerIP).string();
  const std::int16_t server_port = to_integer(intServerPort);
  server_pass_ = to_text(strServerPass).string();
  server_ip_ = std::move(server_ip);
  server_port_ = server_port;
  text_to_send_.clear();
  reply_.clear();
  connected_ = false;
}

Value ControlClient::ReturnText(const Value& strTextToSend) {
  std::string text_to_send = to_text(strTextToSend).string();
  const std::unique_ptr<platform::Socket> socket = link_.sockets.socket();
  text_to_send_ = std::move(text_to_send);
  socket->connect(server_ip_, server_port_);
  if (!wait_for_connection(*socket)) return Value::text(kConnectionTimedOut);
  socket->send(message());
  const bool replied = wait_for_reply(*socket);
  socket->close();
  return Value::text(replied ? std::string_view(reply_) : kReplyTimedOut);
}

void ControlClient::wskEm_DataArrival(std::string_view bytes) {
  reply_ = link_.code_pages.to_utf8(bytes.substr(0, kReplyBytes), link_.ansi_code_page);
}

// QUIRK: the clock is looked at behind each yield, so what arrives too late in the very look that
// ends the wait no longer counts.
bool ControlClient::wait_for_connection(platform::Socket& socket) {
  const auto start = link_.clock.steady();
  while (!connected_) {
    if (socket.wait_connected(kLookInterval)) wskEm_Connect();
    if (waited_too_long(start)) return false;
  }
  return true;
}

bool ControlClient::wait_for_reply(platform::Socket& socket) {
  const auto start = link_.clock.steady();
  while (reply_.empty()) {
    if (const auto bytes = socket.receive(kReplyBytes, kLookInterval)) wskEm_DataArrival(*bytes);
    if (waited_too_long(start)) return false;
  }
  return true;
}

bool ControlClient::waited_too_long(std::chrono::steady_clock::time_point start) const {
  return std::chrono::floor<std::chrono::seconds>(link_.clock.steady() - start) > kLongestWait;
}

// The password travels behind the command; nothing ends the message.
std::string ControlClient::message() const {
  std::string text = text_to_send_;
  text += ",";
  text += server_pass_;
  text += "~with~";
  text += release_;
  return link_.code_pages.from_utf8(text, link_.ansi_code_page);
}

}  // namespace rk::services
