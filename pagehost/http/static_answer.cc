#include "pagehost/http/static_answer.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <optional>

#include "pagehost/http/media_types.h"
#include "pagehost/pages/http_dates.h"
#include "value/text.h"

namespace rk::http {
namespace {

constexpr std::int64_t kSecondNs = 1'000'000'000;

std::string entity_tag(const platform::FileStamp& stamp) {
  char text[64];
  const int length = std::snprintf(text, sizeof text, "\"%llx-%llx\"",
                                   static_cast<unsigned long long>(stamp.modified_ns),
                                   static_cast<unsigned long long>(stamp.size));
  return std::string(text, static_cast<std::size_t>(length));
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

// Whether a list of tags ("*", "a", W/"b") names this one. Ours hold no comma.
bool lists_tag(std::string_view list, std::string_view tag, bool weak_allowed) {
  while (!list.empty()) {
    const std::size_t end = std::min(list.find(','), list.size());
    std::string_view one = trimmed(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
    if (one == "*") return true;
    if (weak_allowed && one.starts_with("W/")) one.remove_prefix(2);
    if (one == tag) return true;
  }
  return false;
}

struct Conditions {
  const pagehost::PageRequest& request;
  const std::string& tag;
  std::int64_t modified;  // whole seconds

  // 0: go on; else 304 or 412.
  int status() const {
    const std::string_view match = request.header("If-Match");
    if (!match.empty()) {
      if (!lists_tag(match, tag, false)) return 412;
    } else if (const auto since =
                   pagehost::parse_date_header(request.header("If-Unmodified-Since"))) {
      if (modified > *since) return 412;
    }
    const std::string_view none = request.header("If-None-Match");
    if (!none.empty()) return lists_tag(none, tag, true) ? 304 : 0;
    const auto since = pagehost::parse_date_header(request.header("If-Modified-Since"));
    return since && modified <= *since ? 304 : 0;
  }

  bool range_counts() const {
    const std::string_view range_if = request.header("If-Range");
    if (range_if.empty()) return true;
    if (range_if.starts_with('"')) return range_if == tag;
    return pagehost::parse_date_header(range_if) == modified;
  }
};

struct Range {
  std::uint64_t first = 0;
  std::uint64_t last = 0;
  bool possible = true;
};

std::optional<std::uint64_t> number(std::string_view digits) {
  std::uint64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return value;
}

// Nothing where the header is none that must be followed.
std::optional<Range> single_range(std::string_view header, std::uint64_t size) {
  constexpr std::string_view kUnit = "bytes=";
  if (!header.starts_with(kUnit)) return std::nullopt;
  header = trimmed(header.substr(kUnit.size()));
  const std::size_t dash = header.find('-');
  if (dash == std::string_view::npos || header.find(',') != std::string_view::npos) {
    return std::nullopt;
  }
  const std::string_view from = header.substr(0, dash);
  const std::string_view to = header.substr(dash + 1);
  if (from.empty()) {
    const std::optional<std::uint64_t> tail = number(to);
    if (!tail) return std::nullopt;
    if (*tail == 0 || size == 0) return Range{0, 0, false};
    return Range{size - std::min(*tail, size), size - 1, true};
  }
  const std::optional<std::uint64_t> first = number(from);
  const std::optional<std::uint64_t> last = to.empty() ? size : number(to);
  if (!first || !last || (*last < *first && !to.empty())) return std::nullopt;
  if (*first >= size) return Range{0, 0, false};
  return Range{*first, std::min(*last, size - 1), true};
}

void set_range(StaticAnswer& answer, const Range& range, std::uint64_t size) {
  const std::string all = "/" + std::to_string(size);
  if (!range.possible) {
    answer.head.status = 416;
    answer.head.reason = "Range Not Satisfiable";
    answer.head.headers.emplace_back("Content-Range", "bytes *" + all);
    answer.count = 0;
    return;
  }
  answer.head.status = 206;
  answer.head.reason = "Partial Content";
  answer.head.headers.emplace_back("Content-Range", "bytes " + std::to_string(range.first) + "-" +
                                                        std::to_string(range.last) + all);
  answer.offset = range.first;
  answer.count = range.last - range.first + 1;
}

bool has_hidden_ending(std::string_view path) {
  constexpr std::string_view kEndings[] = {".asa",    ".inc", ".ini",   ".db",  ".db-wal",
                                           ".db-shm", ".mdb", ".accdb", ".log", ".db-journal"};
  return std::any_of(std::begin(kEndings), std::end(kEndings), [&](std::string_view ending) {
    return path.size() > ending.size() &&
           equal_ignoring_case(path.substr(path.size() - ending.size()), ending);
  });
}

bool has_hidden_name(std::string_view path) {
  constexpr std::string_view kWellKnown = "/.well-known/";
  const std::size_t from = path.starts_with(kWellKnown) ? 1 : 0;
  return path.find("/.", from) != std::string_view::npos;
}

}  // namespace

StaticAnswer static_answer(const pagehost::PageRequest& request, std::string_view path,
                           const platform::FileStamp& stamp) {
  StaticAnswer answer;
  answer.count = stamp.size;
  const std::string tag = entity_tag(stamp);
  const std::int64_t modified = stamp.modified_ns / kSecondNs;
  pagehost::Headers& headers = answer.head.headers;
  headers.emplace_back("Last-Modified", pagehost::date_header(modified));
  headers.emplace_back("ETag", tag);
  headers.emplace_back("Accept-Ranges", "bytes");

  const Conditions conditions{request, tag, modified};
  const int status = conditions.status();
  if (status != 0) {
    answer.head.status = status;
    answer.head.reason = status == 304 ? "Not Modified" : "Precondition Failed";
    answer.count = 0;
    return answer;
  }
  headers.emplace_back("Content-Type", std::string(media_type(path)));
  const std::string_view wanted = request.header("Range");
  if (request.method == "GET" && !wanted.empty() && conditions.range_counts()) {
    if (const auto range = single_range(wanted, stamp.size)) set_range(answer, *range, stamp.size);
  }
  return answer;
}

bool begins_as_database(std::string_view start) {
  using namespace std::string_view_literals;
  return start.starts_with("SQLite format 3\0"sv) ||
         start.starts_with("\0\1\0\0Standard Jet DB"sv) ||
         start.starts_with("\0\1\0\0Standard ACE DB"sv);
}

bool is_hidden(std::string_view path, const std::vector<std::string>& hidden_folders) {
  if (has_hidden_ending(path) || has_hidden_name(path)) return true;
  const std::string lowered = lowered_ascii(path);
  return std::any_of(hidden_folders.begin(), hidden_folders.end(), [&](const std::string& folder) {
    return lowered.starts_with(folder) &&
           (lowered.size() == folder.size() || lowered[folder.size()] == '/');
  });
}

}  // namespace rk::http
