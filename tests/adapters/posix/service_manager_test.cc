#include "adapters/posix/service_manager.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

namespace rk::posix {
namespace {

// Listens where a service manager would.
class Manager {
 public:
  explicit Manager(const std::string& path) : socket_(::socket(AF_UNIX, SOCK_DGRAM, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    if (path.front() == '@') address.sun_path[0] = '\0';
    const auto length = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + path.size());
    listens_ = ::bind(socket_, reinterpret_cast<const sockaddr*>(&address), length) == 0;
    ::setenv("NOTIFY_SOCKET", path.c_str(), 1);
  }
  ~Manager() {
    ::close(socket_);
    ::unsetenv("NOTIFY_SOCKET");
  }
  Manager(const Manager&) = delete;
  Manager& operator=(const Manager&) = delete;

  bool listens() const { return listens_; }
  std::string heard() const {
    std::array<char, 256> bytes{};
    const ssize_t count = ::recv(socket_, bytes.data(), bytes.size(), MSG_DONTWAIT);
    return count < 0 ? "nothing" : std::string(bytes.data(), static_cast<std::size_t>(count));
  }

 private:
  int socket_;
  bool listens_ = false;
};

TEST(ServiceManager, IsToldByASocketInAFolder) {
  std::string folder = ::testing::TempDir() + "rk-notify-XXXXXX";
  ASSERT_NE(::mkdtemp(folder.data()), nullptr);
  {
    const Manager manager(folder + "/notify");
    ASSERT_TRUE(manager.listens());
    EXPECT_TRUE(tell_service_manager("READY=1\nSTATUS=serving"));
    EXPECT_EQ(manager.heard(), "READY=1\nSTATUS=serving");
  }
  std::filesystem::remove_all(folder);
}

TEST(ServiceManager, IsToldByASocketOutsideOfAnyFolder) {
  const Manager manager("@rk-notify-" + std::to_string(::getpid()));
  ASSERT_TRUE(manager.listens());
  EXPECT_TRUE(tell_service_manager("STOPPING=1"));
  EXPECT_EQ(manager.heard(), "STOPPING=1");
}

TEST(ServiceManager, WhereNobodyListensNothingHappens) {
  ::unsetenv("NOTIFY_SOCKET");
  EXPECT_FALSE(tell_service_manager("READY=1"));
  for (const char* named : {"", "relative", "/nowhere/at/all"}) {
    ::setenv("NOTIFY_SOCKET", named, 1);
    EXPECT_FALSE(tell_service_manager("READY=1")) << named;
  }
  ::setenv("NOTIFY_SOCKET", ("/" + std::string(200, 'x')).c_str(), 1);
  EXPECT_FALSE(tell_service_manager("READY=1"));
  ::unsetenv("NOTIFY_SOCKET");
}

}  // namespace
}  // namespace rk::posix
