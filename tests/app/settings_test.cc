#include "app/settings.h"

#include <gtest/gtest.h>

namespace rk::app {
namespace {

Settings parsed(std::string_view text) {
  return parse_settings(text, "rkclient.ini", "/site");
}

std::string failure(std::string_view text) {
  try {
    parsed(text);
  } catch (const SettingsError& error) {
    return error.what();
  }
  return "no error";
}

TEST(Settings, AnEmptyFileGivesTheDefaults) {
  const Settings settings = parsed("");
  EXPECT_EQ(display(settings.server.listen), "127.0.0.1:8080");
  EXPECT_EQ(settings.server.page_seconds, 180);
  EXPECT_EQ(settings.server.stop_seconds, 30);
  EXPECT_EQ(settings.server.session_samesite, "Lax");
  EXPECT_EQ(settings.server.max_body_bytes, 1048576u);
  EXPECT_EQ(settings.server.max_pages, 256);
  EXPECT_EQ(settings.server.show_errors, ErrorViewers::Local);
  EXPECT_EQ(settings.text.page_codepage, kAuto);
  EXPECT_EQ(settings.text.ansi_codepage, 936);
  EXPECT_EQ(settings.data.busy_ms, 5000);
  EXPECT_EQ(settings.log.folder, "/site/log");
  EXPECT_EQ(settings.endpoints.flash_download,
            "https://download.macromedia.com/pub/shockwave/cabs/flash/swflash.cab");
  EXPECT_EQ(settings.endpoints.flash_page, "https://www.adobe.com/go/getflashplayer");
}

TEST(Settings, EveryKindOfValueIsRead) {
  const Settings settings = parsed(
      "\xEF\xBB\xBF; a comment\r\n"
      "# another\r\n"
      "[Server]\r\n"
      "  LISTEN = [::1]:0 \r\n"
      "page_seconds=5\r\n"
      "session_samesite = strict\r\n"
      "show_errors = none\r\n"
      "access_log = log/access.txt\r\n"
      "error_log = /var/log/shop.log\r\n"
      "not_found = /404.asp\r\n"
      "[text]\n"
      "page_codepage = 936\n"
      "template_codepage = AUTO\n"
      "[data]\n"
      "folders = ../other ; /srv/data;\n"
      "[endpoints]\n"
      "filing = http://127.0.0.1:9001");
  EXPECT_EQ(display(settings.server.listen), "[::1]:0");
  EXPECT_EQ(settings.server.page_seconds, 5);
  EXPECT_EQ(settings.server.session_samesite, "Strict");
  EXPECT_EQ(settings.server.show_errors, ErrorViewers::None);
  EXPECT_EQ(settings.server.access_log, "/site/log/access.txt");
  EXPECT_EQ(settings.server.error_log, "/var/log/shop.log");
  EXPECT_EQ(settings.server.not_found, "/404.asp");
  EXPECT_EQ(settings.text.page_codepage, 936);
  EXPECT_EQ(settings.text.template_codepage, kAuto);
  EXPECT_EQ(settings.data.folders, (std::vector<std::string>{"/site/../other", "/srv/data"}));
  EXPECT_EQ(settings.endpoints.filing, "http://127.0.0.1:9001");
}

TEST(Settings, ProxiesAreAddressesAndNetworks) {
  const Settings settings = parsed("[server]\ntrusted_proxies = 127.0.0.1; 10.0.0.0/8 ;::1\n");
  ASSERT_EQ(settings.server.trusted_proxies.size(), 3u);
  EXPECT_TRUE(http::contains(settings.server.trusted_proxies[1], "10.9.9.9"));
  EXPECT_FALSE(http::contains(settings.server.trusted_proxies[0], "10.9.9.9"));
  EXPECT_TRUE(parsed("[server]\ntrusted_proxies =\n").server.trusted_proxies.empty());
  EXPECT_EQ(failure("[server]\ntrusted_proxies = localhost"),
            "rkclient.ini:2: trusted_proxies = \"localhost\": allowed is addresses or networks "
            "between \";\", such as 127.0.0.1; 10.0.0.0/8; ::1");
}

TEST(Settings, AnAddressLosesTheSlashesAtItsEnd) {
  const Settings settings =
      parse_settings("[endpoints]\nfiling = http://a.example//\n", "rkclient.ini", "/site");
  EXPECT_EQ(settings.endpoints.filing, "http://a.example");
}

TEST(Settings, FetchesGoWithoutAProxyWhereNoneIsSet) {
  const Settings none = parse_settings("", "rkclient.ini", "/site");
  EXPECT_EQ(none.fetch.proxy, "");
  EXPECT_EQ(none.fetch.max_body_bytes, 16'777'216u);
  const Settings set = parse_settings("[fetch]\nproxy=http://10.0.0.1:3128\nmax_body_bytes=5\n",
                                      "rkclient.ini", "/site");
  EXPECT_EQ(set.fetch.proxy, "http://10.0.0.1:3128");
  EXPECT_EQ(set.fetch.max_body_bytes, 5u);
}

TEST(Settings, AFileOfAuthoritiesIsNamedByItsPathAndMustBeThere) {
  EXPECT_EQ(parse_settings("[fetch]\nca_file=\n", "rkclient.ini", "/site").fetch.ca_file, "");
  EXPECT_EQ(parse_settings("[fetch]\nca_file=null\n", "rkclient.ini", "/dev").fetch.ca_file,
            "/dev/null");
  EXPECT_NE(failure("[fetch]\nca_file=/no/such.pem").find("a file that can be read"),
            std::string::npos);
}

TEST(Settings, AnUnknownSectionOrKeyIsNamedWithItsLineAndWhatThereIs) {
  EXPECT_EQ(failure("\n[sever]"),
            "rkclient.ini:2: unknown section [sever]; sections are server, text, data, log, "
            "endpoints, fetch");
  EXPECT_EQ(failure("[data]\nbusy = 1"),
            "rkclient.ini:2: unknown key \"busy\" in [data]; its keys are folders, busy_ms");
  EXPECT_EQ(failure("listen = 1"), "rkclient.ini:1: key \"listen\" stands before any [section]");
  EXPECT_EQ(failure("[data]\nnonsense"), "rkclient.ini:2: expected [section] or key = value");
  EXPECT_EQ(failure("[data"), "rkclient.ini:1: a section's line ends with ]");
  EXPECT_EQ(failure("[data]\nbusy_ms=1\nBusy_MS=2"),
            "rkclient.ini:3: key \"busy_ms\" stands twice in [data]");
}

TEST(Settings, ABadValueIsNamedWithWhatIsAllowed) {
  EXPECT_EQ(failure("[server]\npage_seconds = soon"),
            "rkclient.ini:2: page_seconds = \"soon\": allowed is a number from 1 to 31536000");
  EXPECT_EQ(failure("[server]\nmax_pages = 0"),
            "rkclient.ini:2: max_pages = \"0\": allowed is a number from 1 to 4096");
  EXPECT_EQ(failure("[server]\nshow_errors = some"),
            "rkclient.ini:2: show_errors = \"some\": allowed is one of local, all, none");
  EXPECT_EQ(failure("[text]\npage_codepage = 437"),
            "rkclient.ini:2: page_codepage = \"437\": allowed is one of auto, 65001, 874, 932, "
            "936, 949, 950, 1250 to 1258");
  EXPECT_EQ(failure("[server]\nnot_found = 404.asp"),
            "rkclient.ini:2: not_found = \"404.asp\": allowed is a path of the site that begins "
            "with /");
  EXPECT_EQ(failure("[endpoints]\nfiling = 127.0.0.1"),
            "rkclient.ini:2: filing = \"127.0.0.1\": allowed is an address that begins with "
            "http:// or https://, or nothing");
}

TEST(Settings, AListenAddressIsAnAddressAndAPort) {
  EXPECT_EQ(display(parse_listen("0.0.0.0:80")), "0.0.0.0:80");
  EXPECT_EQ(display(parse_listen("localhost:8080")), "127.0.0.1:8080");
  for (const char* bad :
       {"", ":", ":80", "80", "1.2.3.4", "1.2.3.4:", "1.2.3.4:65536", "1.2.3.4:x", "1.2.3:80",
        "::1:80", "[::1]", "shop.example:80", "1.2.3.4:-1", "1.2.3.4: 80"}) {
    EXPECT_THROW(parse_listen(bad), std::invalid_argument) << bad;
  }
}

}  // namespace
}  // namespace rk::app
