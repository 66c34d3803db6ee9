#include "app/site.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "adapters/codepage/code_pages.h"
#include "adapters/curl/http.h"
#include "adapters/odbc/engine.h"
#include "adapters/pcre2/regexps.h"
#include "adapters/posix/clock.h"
#include "adapters/posix/files.h"
#include "adapters/posix/profile_strings.h"
#include "adapters/posix/random.h"
#include "adapters/posix/sockets.h"
#include "adapters/sqlite/database_files.h"
#include "adapters/sqlite/engine.h"
#include "adapters/xml/documents.h"
#include "app/databases.h"
#include "app/program.h"
#include "classes/program_ids.h"
#include "pagehost/components/components.h"
#include "pagehost/pages/page_files.h"
#include "platform/page.h"
#include "value/conversions.h"
#include "value/text.h"

namespace rk::app {
namespace {

constexpr std::string_view kStorefrontClass = "Rkclient.SiteMain";

class PosixSiteFile final : public http::SiteFile {
 public:
  explicit PosixSiteFile(posix::OpenedFile file) : file_(std::move(file)) {}
  const platform::FileStamp& stamp() const override { return file_.stamp; }
  std::size_t read_at(std::uint64_t offset, char* bytes, std::size_t count) override {
    const ssize_t read =
        ::pread(file_.descriptor->number(), bytes, count, static_cast<off_t>(offset));
    return read > 0 ? static_cast<std::size_t>(read) : 0;
  }

 private:
  posix::OpenedFile file_;
};

class PosixSiteFiles final : public http::SiteFiles {
 public:
  explicit PosixSiteFiles(const posix::PosixFiles& files) : files_(files) {}
  std::unique_ptr<http::SiteFile> open(std::string_view path) const override {
    std::optional<posix::OpenedFile> file = files_.open(path);
    return file ? std::make_unique<PosixSiteFile>(std::move(*file)) : nullptr;
  }

 private:
  const posix::PosixFiles& files_;
};

std::vector<std::string> roots_of(const SiteOptions& options) {
  std::vector<std::string> roots{options.folder};
  const std::vector<std::string>& folders = options.settings.data.folders;
  roots.insert(roots.end(), folders.begin(), folders.end());
  return roots;
}

posix::TextDecoding decoding_of(const SiteOptions& options, pagehost::Log& log) {
  posix::TextDecoding decoding;
  decoding.code_page = options.settings.text.template_codepage;
  decoding.ansi = options.settings.text.ansi_codepage;
  const std::string site = options.folder;
  decoding.on_bad_bytes = [site, &log](const std::string& path, std::size_t line) {
    const bool inside = path.starts_with(site + "/");
    log.error((inside ? path.substr(site.size()) : path) + ":" + std::to_string(line) +
              ": bytes that the template's code page does not have");
  };
  return decoding;
}

sqlite::EngineSettings engine_settings(const SiteOptions& options) {
  sqlite::EngineSettings settings;
  settings.site_folder = options.folder;
  settings.data_folders = options.settings.data.folders;
  settings.busy = std::chrono::milliseconds(options.settings.data.busy_ms);
  return settings;
}

pagehost::ShowErrors viewers(ErrorViewers who) {
  switch (who) {
    case ErrorViewers::All:
      return pagehost::ShowErrors::All;
    case ErrorViewers::None:
      return pagehost::ShowErrors::None;
    case ErrorViewers::Local:
      break;
  }
  return pagehost::ShowErrors::Local;
}

pagehost::PageHostOptions host_options(const SiteOptions& given) {
  const Settings& settings = given.settings;
  pagehost::PageHostOptions options;
  options.site_root = given.folder;
  options.page_time = std::chrono::seconds(settings.server.page_seconds);
  options.page_code_page = settings.text.page_codepage;
  options.ansi_code_page = settings.text.ansi_codepage;
  options.show_errors = viewers(settings.server.show_errors);
  options.session_samesite = settings.server.session_samesite;
  options.not_found = settings.server.not_found;
  options.server_software = "Rkclient/" + given.version;
  return options;
}

classes::Deployment deployment_of(const SiteOptions& options) {
  const EndpointSettings& endpoints = options.settings.endpoints;
  classes::Deployment deployment;
  deployment.ansi_code_page = options.settings.text.ansi_codepage;
  deployment.release = "Rkclient" + options.version;
  deployment.endpoints = {endpoints.availability, endpoints.hichina, endpoints.xinnet,
                          endpoints.filing};
  deployment.player = {endpoints.flash_download, endpoints.flash_page};
  return deployment;
}

posix::LeadBytes lead_bytes(const SiteOptions& options, const platform::CodePages& code_pages) {
  posix::LeadBytes lead{};
  for (std::size_t byte = 0; byte < lead.size(); ++byte) {
    lead[byte] = code_pages.is_lead_byte(static_cast<unsigned char>(byte),
                                         options.settings.text.ansi_codepage);
  }
  return lead;
}

// What a fetch leaves of the page's time, so that the page can still answer.
constexpr std::chrono::seconds kLeftToThePage{1};

// An object that outlives its page, kept in a session, gets as long as a page does.
std::chrono::milliseconds time_left(const pagehost::PageWatch& watch, const platform::Clock& clock,
                                    std::chrono::seconds page_time) {
  const auto deadline = watch.deadline();
  if (deadline == std::chrono::steady_clock::time_point::max()) return page_time;
  return std::chrono::floor<std::chrono::milliseconds>(deadline - clock.steady() - kLeftToThePage);
}

}  // namespace

std::string site_folder(const std::string& given) {
  std::error_code error;
  const std::filesystem::path folder = std::filesystem::canonical(given, error);
  if (error || !std::filesystem::is_directory(folder, error)) {
    throw CommandFailure(given + " is not a folder");
  }
  return folder.string();
}

struct Site::Parts {
  Parts(SiteOptions given, pagehost::Log& log_given)
      : options(std::move(given)),
        log(log_given),
        files(roots_of(options), code_pages, decoding_of(options, log)),
        site_files(files),
        engine(engine_settings(options), files, clock),
        database_files(files, engine, std::chrono::milliseconds(options.settings.data.busy_ms)),
        ini_files(database_files),
        profile_strings(ini_files, options.folder, lead_bytes(options, code_pages)),
        deployment(deployment_of(options)),
        owners(log) {
    add_programs();
    host = std::make_unique<pagehost::PageHost>(host_options(options), host_parts());
  }

  void add_programs();
  pagehost::PageHostParts host_parts();
  std::shared_ptr<platform::Database> make_database(
      const std::shared_ptr<const pagehost::PageWatch>& watch);
  odbc::PageHooks odbc_hooks(const std::shared_ptr<const pagehost::PageWatch>& watch);
  classes::LogFolder found_log_folder() const;
  std::shared_ptr<curl::CurlHttp> http_client(pagehost::PageServices& page);
  classes::Equipment equipment(pagehost::PageServices& page);
  void note_host(pagehost::PageServices& page);

  SiteOptions options;
  pagehost::Log& log;
  codepage::IcuCodePages code_pages;
  posix::PosixClock clock;
  posix::SystemRandom random;
  pcre2::Regexps regexps;
  xml::Documents xml;
  posix::PosixFiles files;
  PosixSiteFiles site_files;
  sqlite::Engine engine;
  odbc::Engine odbc;
  sqlite::DatabaseFiles database_files;
  // Pages name these files themselves: what they may do to a file is the same by every way.
  pagehost::PageFiles ini_files;
  posix::ProfileStrings profile_strings;
  classes::Deployment deployment;
  std::function<classes::LogFolder()> log_folder = [this] { return found_log_folder(); };
  HostOwners owners;
  pagehost::Programs programs;
  std::unique_ptr<pagehost::PageHost> host;
};

void Site::Parts::add_programs() {
  pagehost::ComponentParts parts;
  parts.xml = &xml;
  parts.http = [this](pagehost::PageServices& page) { return http_client(page); };
  pagehost::add_components(programs, parts);
  for (const classes::ProgramId& id : classes::program_ids()) {
    const bool watched =
        options.name_unowned_hosts && equal_ignoring_case(id.name, kStorefrontClass);
    programs.add(id.name, [this, make = id.make, watched](pagehost::PageServices& page) {
      if (watched) note_host(page);
      return make(equipment(page));
    });
  }
}

// The site's own folder is found in any letter case, and must lie in the site; one that the setting
// names may lie anywhere.
classes::LogFolder Site::Parts::found_log_folder() const {
  const std::string& named = options.settings.log.folder;
  const std::optional<std::string> found = files.find(named);
  std::vector<std::string> roots;
  if (found) {
    roots.push_back(*found);
  } else if (named != default_log_folder(options.folder)) {
    roots.push_back(named);
  }
  return {std::make_shared<posix::PosixFiles>(roots, code_pages), found.value_or(named)};
}

std::shared_ptr<curl::CurlHttp> Site::Parts::http_client(pagehost::PageServices& page) {
  const std::shared_ptr<const pagehost::PageWatch> watch = page.watch();
  curl::FetchLimits limits;
  const std::chrono::seconds page_time(options.settings.server.page_seconds);
  limits.time_left = [this, watch, page_time] { return time_left(*watch, clock, page_time); };
  limits.still_running = [watch] { watch->check(); };
  limits.proxy = options.settings.fetch.proxy;
  limits.ca_file = options.settings.fetch.ca_file;
  limits.user_agent = "Rkclient/" + options.version;
  limits.max_body_bytes = options.settings.fetch.max_body_bytes;
  return std::make_shared<curl::CurlHttp>(std::move(limits));
}

classes::Equipment Site::Parts::equipment(pagehost::PageServices& page) {
  const std::shared_ptr<const pagehost::PageWatch> watch = page.watch();
  return {clock,
          random,
          code_pages,
          profile_strings,
          deployment,
          log_folder,
          http_client(page),
          std::make_shared<posix::Sockets>([watch] { watch->check(); })};
}

void Site::Parts::note_host(pagehost::PageServices& page) {
  const Ref<platform::ScriptingContext> context = page.context();
  const Text name = joined_text(context->request()->server_variable("HTTP_HOST"));
  const Text connection = joined_text(context->application()->value("Rk_ConnStr"));
  if (!name.empty()) owners.note(name.view(), *page.database(), connection.view());
}

std::shared_ptr<platform::Database> Site::Parts::make_database(
    const std::shared_ptr<const pagehost::PageWatch>& watch) {
  sqlite::PageHooks hooks;
  hooks.limits.expired = [watch] { return watch->over(); };
  hooks.limits.end = [watch] { watch->check(); };
  if (options.trace) {
    hooks.trace = options.trace;
    hooks.place = [watch] { return watch->place(); };
  }
  return std::make_shared<SiteDatabase>(engine.page(std::move(hooks)),
                                        [this, watch] { return odbc.page(odbc_hooks(watch)); });
}

odbc::PageHooks Site::Parts::odbc_hooks(const std::shared_ptr<const pagehost::PageWatch>& watch) {
  odbc::PageHooks hooks;
  hooks.expired = [watch] { return watch->over(); };
  hooks.end = [watch] { watch->check(); };
  if (options.trace) {
    hooks.trace = options.trace;
    hooks.place = [watch] { return watch->place(); };
  }
  return hooks;
}

pagehost::PageHostParts Site::Parts::host_parts() {
  pagehost::PageHostParts parts;
  parts.files = &files;
  parts.page_files = &database_files;
  parts.code_pages = &code_pages;
  parts.clock = &clock;
  parts.random = &random;
  parts.regexps = &regexps;
  parts.programs = &programs;
  parts.log = &log;
  parts.make_database = [this](const std::shared_ptr<const pagehost::PageWatch>& watch) {
    return make_database(watch);
  };
  return parts;
}

Site::Site(SiteOptions options, pagehost::Log& log) {
  const std::string& zone = options.settings.server.timezone;
  if (!zone.empty() && !posix::choose_time_zone(zone)) {
    throw CommandFailure("time zone \"" + zone + "\" is not known to this system");
  }
  curl::start_curl();
  xml::start_xml();
  parts_ = std::make_unique<Parts>(std::move(options), log);
}

Site::~Site() = default;

const std::string& Site::folder() const {
  return parts_->options.folder;
}
const Settings& Site::settings() const {
  return parts_->options.settings;
}
pagehost::PageHost& Site::pages() {
  return *parts_->host;
}
const pagehost::Programs& Site::programs() const {
  return parts_->programs;
}

const platform::Files& Site::files() const {
  return parts_->files;
}
const http::SiteFiles& Site::site_files() const {
  return parts_->site_files;
}
const platform::CodePages& Site::code_pages() const {
  return parts_->code_pages;
}

std::shared_ptr<platform::Database> Site::database() {
  return std::make_shared<SiteDatabase>(parts_->engine.page(),
                                        [parts = parts_.get()] { return parts->odbc.page(); });
}

std::vector<std::string> Site::hidden_folders() const {
  std::vector<std::string> hidden{"/log", "/data"};
  std::vector<std::string> folders = settings().data.folders;
  folders.push_back(settings().log.folder);
  for (const std::string& log : {settings().server.access_log, settings().server.error_log}) {
    if (!log.empty()) folders.push_back(log);
  }
  for (const std::string& named : folders) {
    std::error_code error;
    const std::string real = std::filesystem::weakly_canonical(named, error).string();
    if (!error && real.starts_with(folder() + "/")) {
      hidden.push_back(lowered_ascii(real.substr(folder().size())));
    }
  }
  return hidden;
}

}  // namespace rk::app
