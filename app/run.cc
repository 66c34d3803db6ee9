#include <algorithm>
#include <chrono>
#include <cstdio>

#include "app/commands.h"
#include "app/console_log.h"
#include "app/program.h"
#include "app/settings.h"
#include "app/site.h"
#include "pagehost/http/answer_head.h"
#include "pagehost/http/page_pool.h"
#include "pagehost/http/route.h"
#include "pagehost/http/target.h"
#include "value/text.h"
#include "vbscript/limits.h"

namespace rk::app {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kFirstFailureStatus = 400;

// TIME ROWS FILE:LINE TEXT, on one line whatever the text holds.
std::string trace_line(const platform::TracedStatement& statement) {
  std::string line = std::to_string(statement.microseconds) + " " + std::to_string(statement.rows) +
                     " " + (statement.place.empty() ? "-" : std::string(statement.place)) + " " +
                     std::string(statement.sql);
  std::replace_if(
      line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
  return line + "\n";
}

// The lines of one run of a page, in the order in which the page sent the texts. The page's thread.
class TraceLines {
 public:
  void note(const platform::TracedStatement& statement) {
    lines_.emplace_back(statement.sent, trace_line(statement));
  }
  void write() {
    std::stable_sort(lines_.begin(), lines_.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [sent, line] : lines_) std::fwrite(line.data(), 1, line.size(), stderr);
    lines_.clear();
  }

 private:
  std::vector<std::pair<Clock::time_point, std::string>> lines_;
};

std::pair<std::string, std::string> header_of(const std::string& text) {
  const std::size_t colon = text.find(':');
  const bool wrong = colon == std::string::npos || colon == 0 ||
                     text.find_first_of("\r\n") != std::string::npos ||
                     text.find_first_of(" \t") < colon;
  if (wrong) throw WrongCommandLine("--header " + text + ": expected 'Name: value'");
  const std::size_t value = std::min(text.find_first_not_of(" \t", colon + 1), text.size());
  return {text.substr(0, colon), text.substr(value)};
}

void set_target(pagehost::PageRequest& request, const RunOptions& options,
                const platform::CodePages& code_pages) {
  // A "?" in PAGE begins a query string, as in an address.
  const std::size_t question = std::min(options.page.find('?'), options.page.size());
  const std::string path = options.page.substr(0, question);
  request.query = options.query;
  if (question < options.page.size()) {
    if (!options.query.empty()) throw WrongCommandLine("PAGE holds a query string beside --query");
    request.query = options.page.substr(question + 1);
  }
  const std::string encoded = http::encoded_path(path.starts_with('/') ? path : "/" + path);
  const std::optional<http::Target> target =
      http::parse_target(encoded, platform::kUtf8, code_pages);
  if (!target) throw WrongCommandLine(options.page + " is no path of the site");
  request.path = target->path;
}

pagehost::PageRequest request_of(const RunOptions& options, const platform::CodePages& code_pages) {
  pagehost::PageRequest request;
  request.method = options.method.empty() ? "GET" : options.method;
  request.headers.emplace_back("Host", options.host);
  set_target(request, options, code_pages);
  if (options.form) {
    if (options.method == "GET") throw WrongCommandLine("--form goes with POST, not with GET");
    request.method = "POST";
    request.body = *options.form;
  }
  for (const std::string& text : options.headers) {
    auto header = header_of(text);
    if (equal_ignoring_case(header.first, "host")) {
      request.headers.front().second = header.second;
    } else {
      request.headers.push_back(std::move(header));
    }
  }
  if (request.method == "POST") {
    if (request.header("Content-Type").empty()) {
      request.headers.emplace_back("Content-Type", "application/x-www-form-urlencoded");
    }
    request.headers.emplace_back("Content-Length", std::to_string(request.body.size()));
  }
  return request;
}

std::string whole_answer(const pagehost::PageAnswer& answer, bool include_headers) {
  if (!include_headers) return answer.body;
  http::HeadFraming framing;
  if (http::has_body(answer.status)) framing.length = answer.body.size();
  return http::answer_head(answer, framing) + answer.body;
}

void write_figures(std::vector<std::int64_t> times) {
  std::sort(times.begin(), times.end());
  const std::size_t count = times.size();
  const std::size_t p99 = std::min(count - 1, (count * 99 + 99) / 100 - 1);
  std::fprintf(stderr, "%zu runs: min %lld us, median %lld us, p99 %lld us\n", count,
               static_cast<long long>(times.front()), static_cast<long long>(times[count / 2]),
               static_cast<long long>(times[p99]));
}

// The page's answer; the last of several runs.
pagehost::PageAnswer run_page(Site& site, pagehost::PageRequest request, int times,
                              TraceLines& trace) {
  http::RouteRules rules{site.folder(), site.hidden_folders(), pagehost::PageHost::is_page};
  const http::Route way = http::route(request.path, rules, site.files());
  if (way.kind == http::Route::Kind::Folder) return http::folder_redirect(way.path, request.query);
  const bool page = way.kind == http::Route::Kind::Page;
  if (page) {
    request.path = way.path;
    request.path_info = way.path_info;
  }
  std::vector<std::int64_t> microseconds;
  microseconds.reserve(static_cast<std::size_t>(times));
  pagehost::PageAnswer answer;
  for (int i = 0; i < std::max(times, 1); ++i) {
    const Clock::time_point begin = Clock::now();
    answer = page ? site.pages().run(request)
                  : site.pages().answer_not_found(request, pagehost::SessionTurn());
    const auto spent = Clock::now() - begin;
    trace.write();
    microseconds.push_back(std::chrono::duration_cast<std::chrono::microseconds>(spent).count());
  }
  if (times > 0) write_figures(std::move(microseconds));
  return answer;
}

}  // namespace

int run(const RunOptions& options) {
  SiteOptions site_options;
  site_options.folder = site_folder(options.site);
  site_options.settings = load_settings(site_options.folder);
  site_options.version = options.version;
  TraceLines trace;
  if (options.trace) {
    site_options.trace = [&](const platform::TracedStatement& told) { trace.note(told); };
  }
  ConsoleLog log(ConsoleLog::Style::Plain);
  Site site(std::move(site_options), log);
  pagehost::PageRequest request = request_of(options, site.code_pages());

  pagehost::PageAnswer answer;
  http::run_on_page_thread(vbscript::kPageThreadStackBytes, [&] {
    site.pages().start();
    trace.write();
    answer = run_page(site, std::move(request), options.repeat, trace);
    site.pages().stop();
    trace.write();
  });
  print(whole_answer(answer, options.include_headers));
  if (answer.status < kFirstFailureStatus) return kDone;
  if (!log.had_errors()) {
    throw CommandFailure(options.page + " answered " + std::to_string(answer.status) + " " +
                         answer.reason);
  }
  return kFailed;
}

}  // namespace rk::app
