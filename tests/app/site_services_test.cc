// The services on the real thing: pages of a site folder on disk, loopback servers, the files and
// sockets of the system.
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <thread>

#include "adapters/codepage/code_pages.h"
#include "adapters/posix/clock.h"
#include "adapters/posix/files.h"
#include "adapters/posix/profile_strings.h"
#include "adapters/posix/sockets.h"
#include "app/site.h"
#include "platform/page.h"
#include "services/control_client.h"
#include "services/daily_log.h"
#include "tests/support/fixed_clock.h"
#include "vbscript/limits.h"

namespace rk::app {
namespace {

namespace fs = std::filesystem;
using std::chrono::milliseconds;

constexpr std::string_view kBlanks = "                  ";

// Plays its part with each connection on a thread of its own, and closes it.
class LoopbackServer {
 public:
  using Part = std::function<void(int peer)>;
  explicit LoopbackServer(Part part) : listener_(::socket(AF_INET, SOCK_STREAM, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    // Below the ports that are given out, as control servers have ports of 16 bits with a sign.
    static std::atomic<std::uint16_t> next{21000};
    do {
      port_ = next++;
      address.sin_port = htons(port_);
    } while (::bind(listener_, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0);
    ::listen(listener_, 8);
    thread_ = std::thread([this, part = std::move(part)] {
      for (int peer; (peer = ::accept(listener_, nullptr, nullptr)) >= 0;) {
        part(peer);
        ::close(peer);
      }
    });
  }
  ~LoopbackServer() {
    ::shutdown(listener_, SHUT_RDWR);
    thread_.join();
    ::close(listener_);
  }
  int port() const { return port_; }
  std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  int listener_;
  std::uint16_t port_ = 0;
  std::thread thread_;
};

std::string received(int peer) {
  char bytes[4096];
  const ssize_t size = ::recv(peer, bytes, sizeof bytes, 0);
  return std::string(bytes, static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
}

// A connection that is closed with a reset instead of an end.
void reset(int peer) {
  const linger now{1, 0};
  ::setsockopt(peer, SOL_SOCKET, SO_LINGER, &now, sizeof now);
}

void say(int peer, std::string_view bytes) {
  ::send(peer, bytes.data(), bytes.size(), MSG_NOSIGNAL);
}

// Until the other side gives up.
void be_silent(int peer) {
  while (!received(peer).empty()) {
  }
}

LoopbackServer::Part answering(std::string answer) {
  return [answer = std::move(answer)](int peer) {
    received(peer);
    say(peer, answer);
  };
}

std::string content(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

class SilentLog final : public pagehost::Log {
 public:
  void error(std::string_view) override {}
  void note(std::string_view) override {}
};

class SiteServices : public testing::Test {
 protected:
  SiteServices() {
    std::string pattern = (fs::temp_directory_path() / "services-XXXXXX").string();
    root_ = ::mkdtemp(pattern.data());
    fs::create_directories(root_ / "log");
    options_.folder = root_.string();
    options_.settings = parse_settings("", "rkclient.ini", root_.string());
    options_.version = "1.0.0";
  }
  ~SiteServices() override {
    site_.reset();
    fs::remove_all(root_);
  }

  std::string answer_of(std::string_view script) {
    if (!site_) {
      site_ = std::make_unique<Site>(options_, log_);
      site_->pages().start();
    }
    std::ofstream(root_ / "a.asp", std::ios::binary)
        << "<%Set h = Server.CreateObject(\"Rkclient.Host\")\n"
           "Set i = Server.CreateObject(\"Rkclient.classIniFile\")\n"
           "Set s = Server.CreateObject(\"Rkclient.SiteMain\")\n"
        << script << "%>";
    pagehost::PageRequest request;
    request.path = "/a.asp";
    return site_->pages().run(request).body;
  }
  std::string fetched(const std::string& address) {
    return answer_of("Response.Write h.GetURL(\"" + address + "\") & \"|\" & s.GetURL(\"" +
                     address + "\")");
  }
  std::string log_of_today() {
    for (const auto& entry : fs::directory_iterator(root_ / "log")) return content(entry.path());
    return "(none)";
  }

  fs::path root_;
  SiteOptions options_;
  SilentLog log_;
  std::unique_ptr<Site> site_;
};

// --- control server -----------------------------------------------------------------------------

TEST_F(SiteServices, ACommandGoesOutInTheAnsiCodePageAndItsAnswerComesBack) {
  std::string sent;
  LoopbackServer server([&](int peer) {
    sent = received(peer);
    say(peer, "\xBA\xC3");
  });
  EXPECT_EQ(answer_of("h.Init \"127.0.0.1\", " + std::to_string(server.port()) +
                      ", \"pw1\"\nResponse.Write h.ReturnText(\"中\")"),
            "好");
  EXPECT_EQ(sent, "\xD6\xD0,pw1~with~Rkclient1.0.0");
}

TEST_F(SiteServices, AWaitForTheControlServerEndsWithThePage) {
  LoopbackServer server(be_silent);
  const std::string answer =
      answer_of("Server.ScriptTimeout = 1\nOn Error Resume Next\nh.Init \"127.0.0.1\", " +
                std::to_string(server.port()) + ", \"pw1\"\nh.ReturnText \"a\"\n" +
                "Response.Write \"went on\"");
  EXPECT_NE(answer.find("Script timed out"), std::string::npos) << answer;
  EXPECT_EQ(answer.find("went on"), std::string::npos) << answer;
}

// A clock that stands still for some looks and is past every limit from then on.
class LeapingClock final : public platform::Clock {
 public:
  explicit LeapingClock(int looks) : looks_(looks) {}
  double now() const override { return 45000; }
  std::chrono::steady_clock::time_point steady() const override {
    return std::chrono::steady_clock::time_point() + std::chrono::seconds(looks_-- > 0 ? 0 : 61);
  }

 private:
  mutable int looks_;
};

TEST(ControlServer, EachFailureReadsAsItsText) {
  LoopbackServer silent(be_silent);
  LoopbackServer gone([](int) {});
  LoopbackServer resetting(reset);
  LoopbackServer late_reset([](int peer) {
    received(peer);
    reset(peer);
  });
  LoopbackServer half([](int peer) {
    received(peer);
    say(peer, "\xBA");
  });
  struct Row {
    const char* what;
    const char* host;
    int port;
    int looks;  // at the clock, before the limit is over
    const char* answer;
  };
  const Row rows[] = {
      {"no such host", "no.such.host.invalid", 80, 1, "连接超时"},
      {"no host", "", 1, 1, "连接超时"},
      {"refused", "127.0.0.1", 1, 1, "连接超时"},
      {"refused by IPv6", "::1", 1, 1, "连接超时"},
      {"silent", "127.0.0.1", silent.port(), 3, "通讯超时"},
      {"hangs up", "127.0.0.1", gone.port(), 3, "通讯超时"},
      {"resets", "127.0.0.1", resetting.port(), 3, "通讯超时"},
      {"resets behind the message", "127.0.0.1", late_reset.port(), 3, "通讯超时"},
      {"half a character", "127.0.0.1", half.port(), 5, "\xEF\xBF\xBD"},
  };
  const codepage::IcuCodePages code_pages;
  posix::Sockets sockets([] {});
  for (const Row& row : rows) {
    const LeapingClock clock(row.looks);
    services::ControlClient client({sockets, clock, code_pages, platform::kGb2312}, "R1");
    client.Init(Value::text(row.host), Value::long_integer(row.port), Value::text("pw"));
    EXPECT_EQ(client.ReturnText(Value::text("a")).as_view(), row.answer) << row.what;
  }
}

// --- fetches ------------------------------------------------------------------------------------

TEST_F(SiteServices, EachAnswerOfAWebServerReadsAsItsText) {
  options_.settings.fetch.max_body_bytes = 100'000;
  const std::string head = "HTTP/1.1 200 OK\r\nConnection: close\r\n";
  struct Row {
    const char* what;
    LoopbackServer::Part part;
    std::string text;
  };
  const Row rows[] = {
      {"a body", answering(head + "Content-Length: 2\r\n\r\n\xD6\xD0"), "中"},
      {"an error page", answering("HTTP/1.1 404 No\r\nContent-Length: 4\r\n\r\nnone"), "none"},
      {"an empty body", answering(head + "Content-Length: 0\r\n\r\n"), ""},
      {"chunks", answering(head + "Transfer-Encoding: chunked\r\n\r\n2\r\nab\r\n0\r\n\r\n"), "ab"},
      {"UTF-8, which is not recognised", answering(head + "\r\n\xE4\xBD\xA0\xE5"), "浣犲"},
      {"half a body", answering(head + "Content-Length: 9\r\n\r\nhalf"), "0119"},
      {"half a head", answering("HTTP/1.1 200 OK\r\nContent-"), "0119"},
      {"no HTTP", answering("220 mail.example ESMTP\r\n"), "0119"},
      {"nothing", answering(""), "0119"},
      {"a reset", reset, "0119"},
      {"an endless body",
       [&head](int peer) {
         received(peer);
         say(peer, head + "\r\n");
         const std::string piece(50'000, 'x');
         while (::send(peer, piece.data(), piece.size(), MSG_NOSIGNAL) > 0) {
         }
       },
       "0119"},
      {"slow bytes",
       [&head](int peer) {
         received(peer);
         for (const char byte : head + "\r\nslow") say(peer, std::string_view(&byte, 1));
       },
       "slow"},
  };
  for (const Row& row : rows) {
    LoopbackServer server(row.part);
    EXPECT_EQ(fetched(server.address() + "/"), row.text + "|" + row.text) << row.what;
  }
  for (const char* address : {"http://127.0.0.1:1/", "http://no.such.host.invalid/", "", "x",
                              "file:///etc/hostname", "http://", "http://a b/", "http://[::1/"}) {
    EXPECT_EQ(fetched(address), "0119|0119") << address;
  }
}

TEST_F(SiteServices, AFetchLeavesThePageASecondToAnswer) {
  LoopbackServer server(be_silent);
  EXPECT_EQ(
      answer_of("Server.ScriptTimeout = 2\nResponse.Write h.GetURL(\"" + server.address() + "/\")"),
      "0119");
}

TEST_F(SiteServices, ADomainWithABlankIsAskedForUnencoded) {
  std::string asked;
  LoopbackServer server([&](int peer) {
    asked = received(peer);
    say(peer, "HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nfree");
  });
  options_.settings.endpoints.availability = server.address();
  EXPECT_EQ(answer_of("Response.Write h.chDomainReg(\"a b.com\")"), "free");
  EXPECT_TRUE(asked.starts_with("GET /cgi-bin/check_muitl.cgi?domain=a b.com&rktemstr=")) << asked;
}

TEST_F(SiteServices, AnEndpointThatIsNotSetIsNamedToThePage) {
  EXPECT_EQ(answer_of("On Error Resume Next\nh.chDomainReg \"a\"\nResponse.Write Err.Description"),
            "No address is configured for [endpoints] availability");
}

// --- log ----------------------------------------------------------------------------------------

TEST_F(SiteServices, LinesOfALogAreOfTheAnsiCodePage) {
  answer_of("h.writelog \"中\"\nh.writelog \"b\"");
  const std::string log = log_of_today();
  const std::string first = std::string(kBlanks) + "\xD6\xD0\r\n";
  const std::string second = std::string(kBlanks) + "b\r\n";
  ASSERT_EQ(log.size(), 2 * 19 + first.size() + second.size()) << log;
  EXPECT_EQ(log.substr(19, first.size()), first);
  EXPECT_TRUE(log.ends_with(second));
}

TEST_F(SiteServices, ALogFolderThatIsMissingOrAFileLosesTheLineSilently) {
  fs::remove(root_ / "log");
  EXPECT_EQ(answer_of("h.writelog \"a\"\nResponse.Write \"on\""), "on");
  std::ofstream(root_ / "log") << "x";
  EXPECT_EQ(answer_of("h.writelog \"a\"\nResponse.Write \"on\""), "on");
  EXPECT_EQ(content(root_ / "log"), "x");
  fs::remove(root_ / "log");
  fs::create_directory(root_ / "log");
  answer_of("h.writelog \"a\"");
  EXPECT_TRUE(log_of_today().ends_with("a\r\n")) << "once the folder is there again";
}

TEST_F(SiteServices, TheLogFolderIsFoundInAnyLetterCase) {
  fs::rename(root_ / "log", root_ / "Log");
  answer_of("h.writelog \"a\"");
  EXPECT_FALSE(fs::is_empty(root_ / "Log"));
  EXPECT_FALSE(fs::exists(root_ / "log"));
}

TEST_F(SiteServices, ALogFolderThatLeadsOutOfTheSiteIsWrittenOnlyWhereASettingNamesIt) {
  std::string pattern = (fs::temp_directory_path() / "elsewhere-XXXXXX").string();
  const fs::path elsewhere = ::mkdtemp(pattern.data());
  fs::remove(root_ / "log");
  fs::create_directory_symlink(elsewhere, root_ / "log");
  answer_of("h.writelog \"a\"");
  EXPECT_TRUE(fs::is_empty(elsewhere));
  site_.reset();
  options_.settings.log.folder = elsewhere.string();
  answer_of("h.writelog \"a\"");
  EXPECT_FALSE(fs::is_empty(elsewhere));
  fs::remove_all(elsewhere);
}

class DailyLogOnDisk : public SiteServices {
 protected:
  void write(std::string_view message) {
    posix::PosixFiles files({(root_ / "log").string()}, code_pages_);
    services::writelog({files, clock_, code_pages_, platform::kGb2312, (root_ / "log").string()},
                       Value::text(message));
  }
  const fs::path today() const { return root_ / "log/2023-03-15.log"; }

  tests::FixedClock clock_{45000.5};
  codepage::IcuCodePages code_pages_;
};

TEST_F(DailyLogOnDisk, ALinkOutOfTheFolderIsNotFollowed) {
  std::ofstream(root_ / "secret.asp") << "secret";
  fs::create_symlink(root_ / "secret.asp", today());
  write("a");
  EXPECT_EQ(content(root_ / "secret.asp"), "secret");
  EXPECT_TRUE(fs::is_symlink(today())) << "nor is it replaced by what it led to";
}

TEST_F(DailyLogOnDisk, AFolderInTheFilesPlaceLosesTheLineSilently) {
  fs::create_directory(today());
  EXPECT_NO_THROW(write("a"));
  EXPECT_TRUE(fs::is_empty(today()));
}

TEST_F(DailyLogOnDisk, AFullDiskLosesTheLineAndKeepsTheFile) {
  std::ofstream(today(), std::ios::binary) << std::string(5000, 'x') << "\r\n";
  rlimit before{};
  ::getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{4096, before.rlim_max};
  const auto handler = ::signal(SIGXFSZ, SIG_IGN);
  ::setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_NO_THROW(write("a"));
  ::setrlimit(RLIMIT_FSIZE, &before);
  ::signal(SIGXFSZ, handler);
  EXPECT_EQ(content(today()), std::string(5000, 'x') + "\r\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(root_ / "log"), {}), 1) << "nothing is left over";
}

// A writer is killed in the middle of its work, again and again.
TEST_F(DailyLogOnDisk, AKillNeverLeavesHalfAFile) {
  const std::string line = "2023-03-15 12:00:00" + std::string(kBlanks) + "line\r\n";
  std::string old;
  while (old.size() < 1'000'000) old += line;
  for (int round = 0; round < 10; ++round) {
    std::ofstream(today(), std::ios::binary) << old;
    int pipe_ends[2];
    ASSERT_EQ(::pipe(pipe_ends), 0);
    const pid_t writer = ::fork();
    if (writer == 0) {
      while (true) {
        write("line");
        if (::write(pipe_ends[1], "x", 1) != 1) ::_exit(1);
      }
    }
    char byte;
    for (int lines = 0; lines <= round; ++lines) ASSERT_EQ(::read(pipe_ends[0], &byte, 1), 1);
    ::kill(writer, SIGKILL);
    ::waitpid(writer, nullptr, 0);
    ::close(pipe_ends[0]);
    ::close(pipe_ends[1]);
    const std::string now = content(today());
    ASSERT_GT(now.size(), old.size());
    ASSERT_EQ(now.size() % line.size(), 0u);
    ASSERT_TRUE(now.ends_with(line));
  }
}

// --- INI files ----------------------------------------------------------------------------------

TEST_F(SiteServices, APageReadsAndWritesAnIniFileOfItsSite) {
  EXPECT_EQ(answer_of("i.INIFileName = Server.MapPath(\"/shop.ini\")\n"
                      "i.WriteIniKey \"邮\", \"k\", \" 中 \"\n"
                      "Response.Write \"[\" & i.GetIniKey(\"邮\", \"K\") & \"]\""),
            "[中]");
  EXPECT_EQ(content(root_ / "shop.ini"), "[\xD3\xCA]\r\nk= \xD6\xD0 \r\n");
  EXPECT_EQ(answer_of("i.INIFileName = \"shop.ini\"\nResponse.Write i.GetIniKey(\"邮\", \"k\")\n"
                      "i.DelIniSec \"邮\""),
            "中");
  EXPECT_EQ(content(root_ / "shop.ini"), "");
}

TEST_F(SiteServices, AValueOf1500CharactersComesBackAsItsFirst1023) {
  EXPECT_EQ(answer_of("i.INIFileName = \"a.ini\"\ni.WriteIniKey \"s\", \"k\", String(1500, \"x\")\n"
                      "Response.Write Len(i.GetIniKey(\"s\", \"k\"))\n"
                      "i.WriteIniKey \"s\", \"k\", String(600, \"中\")\n"
                      "Response.Write \" \" & Len(i.GetIniKey(\"s\", \"k\"))"),
            "1023 511");
}

TEST_F(SiteServices, IniFilesThatCannotBeReachedReadAsNothingAndRaiseNothing) {
  fs::create_directory(root_ / "folder.ini");
  for (const char* file : {"/etc/hostname", "../outside.ini", "none/a.ini", "folder.ini", "",
                           "C:\\\\windows\\\\win.ini", "/proc/self/status"}) {
    EXPECT_EQ(answer_of("i.INIFileName = \"" + std::string(file) +
                        "\"\ni.WriteIniKey \"s\", \"k\", \"v\"\ni.DelIniKey \"s\", \"k\"\n"
                        "i.DelIniSec \"s\"\nResponse.Write \"[\" & i.GetIniKey(\"s\", \"k\") & "
                        "\"]\""),
              "[]")
        << file;
  }
  EXPECT_FALSE(fs::exists(root_.parent_path() / "outside.ini"));
}

TEST_F(SiteServices, AnIniFileIsNeverADatabaseNorWhatLiesBesideOne) {
  const std::string database = "SQLite format 3" + std::string(1, '\0') + std::string(84, 'x');
  std::ofstream(root_ / "d.db", std::ios::binary) << database;
  std::ofstream(root_ / "e.db-wal", std::ios::binary) << "[a]\r\nk=log\r\n";
  EXPECT_EQ(answer_of("For Each f In Array(\"d.db\", \"e.db-wal\", \"E.DB-SHM\")\n"
                      "i.INIFileName = Server.MapPath(f)\n"
                      "i.WriteIniKey \"a\", \"k\", \"v\"\n"
                      "Response.Write \"[\" & i.GetIniKey(\"a\", \"k\") & \"]\"\n"
                      "i.DelIniSec \"a\"\nNext"),
            "[][][]");
  EXPECT_EQ(content(root_ / "d.db"), database);
  EXPECT_EQ(content(root_ / "e.db-wal"), "[a]\r\nk=log\r\n");
  EXPECT_FALSE(fs::exists(root_ / "E.DB-SHM"));
}

TEST_F(SiteServices, AnIniFileBehindALinkOfTheSiteIsTheOneThatIsWritten) {
  fs::create_directory(root_ / "sub");
  std::ofstream(root_ / "sub/x.ini") << "[s]\nk=old\n";
  fs::create_symlink("sub/x.ini", root_ / "in.ini");
  answer_of("i.INIFileName = \"in.ini\"\ni.WriteIniKey \"s\", \"k\", \"new\"");
  EXPECT_TRUE(fs::is_symlink(root_ / "in.ini"));
  EXPECT_EQ(content(root_ / "sub/x.ini"), "[s]\nk=new\n");
}

TEST_F(SiteServices, TwoProgramsThatWriteAtOnceLoseNothing) {
  constexpr int kKeys = 60;
  const codepage::IcuCodePages code_pages;
  const std::string path = (root_ / "shop.ini").string();
  const auto write_keys = [&](const std::string& prefix) {
    posix::PosixFiles files({root_.string()}, code_pages);
    posix::ProfileStrings strings(files, root_.string());
    for (int i = 0; i < kKeys; ++i) strings.write("s", prefix + std::to_string(i), "v", path);
  };
  const pid_t other = ::fork();
  if (other == 0) {
    write_keys("other");
    ::_exit(0);
  }
  write_keys("own");
  ::waitpid(other, nullptr, 0);
  posix::PosixFiles files({root_.string()}, code_pages);
  posix::ProfileStrings strings(files, root_.string());
  for (int i = 0; i < kKeys; ++i) {
    EXPECT_EQ(strings.read("s", "own" + std::to_string(i), 1024, path), "v") << i;
    EXPECT_EQ(strings.read("s", "other" + std::to_string(i), 1024, path), "v") << i;
  }
}

}  // namespace
}  // namespace rk::app
