#include <sys/resource.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <thread>

#include "adapters/posix/service_manager.h"
#include "app/commands.h"
#include "app/console_log.h"
#include "app/program.h"
#include "app/settings.h"
#include "app/site.h"
#include "pagehost/http/front.h"
#include "pagehost/http/hosted_pages.h"
#include "vbscript/limits.h"

namespace rk::app {
namespace {

// What a full pool answers with 503 rather than let wait, as a multiple of the pages that run.
constexpr std::size_t kWaitingPerPage = 10;

// Each connection takes a descriptor, and shells give few.
void raise_descriptor_limit() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

void make_log_folder(const Site& site) {
  const std::string& folder = site.settings().log.folder;
  if (site.files().is_folder(folder)) return;  // in whichever letter case
  std::error_code error;
  std::filesystem::create_directories(folder, error);
  if (error) throw CommandFailure("cannot make the log folder " + folder + ": " + error.message());
}

http::PagePoolOptions pool_options(const ServerSettings& settings) {
  http::PagePoolOptions pool;
  pool.max_threads = static_cast<std::size_t>(settings.max_pages);
  pool.max_waiting = pool.max_threads * kWaitingPerPage;
  pool.eager_threads = std::max(2U, std::thread::hardware_concurrency());
  pool.stack_bytes = vbscript::kPageThreadStackBytes;
  return pool;
}

http::FrontOptions front_options(const Site& site) {
  const ServerSettings& settings = site.settings().server;
  http::FrontOptions options;
  options.host = settings.listen.host;
  options.port = settings.listen.port;
  options.rules.site_root = site.folder();
  options.rules.hidden_folders = site.hidden_folders();
  options.rules.is_page = pagehost::PageHost::is_page;
  options.header.line_bytes = static_cast<std::size_t>(settings.max_line_bytes);
  options.header.header_bytes = static_cast<std::size_t>(settings.max_header_bytes);
  options.header.fields = static_cast<std::size_t>(settings.max_headers);
  options.max_body_bytes = settings.max_body_bytes;
  options.max_connections = static_cast<std::size_t>(settings.max_connections);
  options.header_time = std::chrono::seconds(settings.header_seconds);
  options.body_time = std::chrono::seconds(settings.body_seconds);
  options.idle_time = std::chrono::seconds(settings.idle_seconds);
  options.send_time = std::chrono::seconds(settings.send_seconds);
  options.stop_time = std::chrono::seconds(settings.stop_seconds);
  options.pool = pool_options(settings);
  options.access_log = settings.access_log;
  options.proxies = settings.trusted_proxies;
  options.own_signals = true;
  return options;
}

http::FrontParts front_parts(const Site& site, http::Pages& pages, pagehost::Log& log) {
  http::FrontParts parts;
  parts.pages = &pages;
  parts.files = &site.files();
  parts.site_files = &site.site_files();
  parts.code_pages = &site.code_pages();
  parts.log = &log;
  return parts;
}

std::unique_ptr<ConsoleLog> error_log(const Settings& settings) {
  const std::string& path = settings.server.error_log;
  if (path.empty()) return std::make_unique<ConsoleLog>(ConsoleLog::Style::Timed);
  return std::make_unique<ConsoleLog>(ConsoleLog::Style::Timed, path);
}

ListenAddress listen_address(const ServeOptions& options, const Settings& settings) {
  if (options.listen.empty()) return settings.server.listen;
  try {
    return parse_listen(options.listen);
  } catch (const std::invalid_argument& allowed) {
    throw WrongCommandLine("--listen " + options.listen + ": allowed is " + allowed.what());
  }
}

}  // namespace

int serve(const ServeOptions& options) {
  SiteOptions site_options;
  site_options.folder = site_folder(options.site);
  site_options.settings = load_settings(site_options.folder);
  site_options.settings.server.listen = listen_address(options, site_options.settings);
  site_options.version = options.version;
  site_options.name_unowned_hosts = true;
  ListenAddress address = site_options.settings.server.listen;
  raise_descriptor_limit();

  const std::unique_ptr<ConsoleLog> kept_log = error_log(site_options.settings);
  ConsoleLog& log = *kept_log;
  Site site(std::move(site_options), log);
  make_log_folder(site);
  http::HostedPages pages(site.pages());
  http::FrontOptions options_of_front = front_options(site);
  options_of_front.on_hangup = [&log] { log.reopen(); };
  options_of_front.on_stop = [] { posix::tell_service_manager("STOPPING=1"); };
  http::Front front(std::move(options_of_front), front_parts(site, pages, log));
  address.port = front.open();
  // global.asa runs on a thread with a page's stack, as pages do.
  http::run_on_page_thread(vbscript::kPageThreadStackBytes, [&] { site.pages().start(); });
  log.note("pages are in code page " + std::to_string(site.pages().code_page()));
  const std::string serving = "serving " + options.site + " at http://" + display(address) + "/\n";
  print(serving);
  posix::tell_service_manager("READY=1\nSTATUS=" + serving);
  front.run();
  http::run_on_page_thread(vbscript::kPageThreadStackBytes, [&] { site.pages().stop(); });
  return kDone;
}

}  // namespace rk::app
