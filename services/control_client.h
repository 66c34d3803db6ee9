// The text client of the hosting control server: one command, one connection, the first answer.
//
// The state is an object's: address, port and password as Init set them, and the reply and the
// connected flag, which outlive a command. Belongs to one page's thread. Waits sleep in the
// socket and end with the page.
#ifndef RK_SERVICES_CONTROL_CLIENT_H_
#define RK_SERVICES_CONTROL_CLIENT_H_

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/code_page.h"
#include "platform/sockets.h"
#include "value/value.h"

namespace rk::services {

// What the client needs of the outside; owned by the program.
struct ControlLink {
  platform::Sockets& sockets;
  const platform::Clock& clock;
  const platform::CodePages& code_pages;
  int ansi_code_page;
};

class ControlClient {
 public:
  ControlClient(ControlLink link, std::string release)
      : link_(link), release_(std::move(release)) {}

  // No network activity. Raises 13, 6 or 94 for arguments that do not convert.
  void Init(const Value& strServerIP, const Value& intServerPort, const Value& strServerPass);

  // The reply, "连接超时" where no connection came about within 60 seconds, "通讯超时" where no
  // reply came within 60 seconds behind the message. Raises what the socket raises at once.
  // QUIRK: neither the connected flag nor the reply is reset, so that a second command without a
  // new Init sends at once and returns the first reply again.
  Value ReturnText(const Value& strTextToSend);

  // The socket's two events.
  void wskEm_Connect() { connected_ = true; }
  void wskEm_DataArrival(std::string_view bytes);

 private:
  bool wait_for_connection(platform::Socket& socket);
  bool wait_for_reply(platform::Socket& socket);
  bool waited_too_long(std::chrono::steady_clock::time_point start) const;
  std::string message() const;

  ControlLink link_;
  std::string release_;
  std::string server_ip_;
  std::int16_t server_port_ = 0;
  std::string server_pass_;
  std::string text_to_send_;
  std::string reply_;  // UTF-8
  bool connected_ = false;
};

}  // namespace rk::services

#endif  // RK_SERVICES_CONTROL_CLIENT_H_
