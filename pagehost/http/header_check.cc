#include "pagehost/http/header_check.h"

#include <algorithm>
#include <array>

#include "value/text.h"

namespace rk::http {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

constexpr bool is_token_character(char c) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  return letter || (c >= '0' && c <= '9') || kMarks.find(c) != std::string_view::npos;
}

constexpr std::array<bool, 256> kToken = [] {
  std::array<bool, 256> table{};
  for (std::size_t i = 0; i < 256; ++i) table[i] = is_token_character(static_cast<char>(i));
  return table;
}();

bool is_token(std::string_view text) {
  return !text.empty() && std::all_of(text.begin(), text.end(),
                                      [](char c) { return kToken[static_cast<unsigned char>(c)]; });
}

bool is_control(char c) {
  return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

Refusal bad(const char* reason) {
  return {400, reason};
}

Refusal version_refusal(std::string_view version) {
  if (version == "HTTP/1.1" || version == "HTTP/1.0") return {};
  const bool other = version.size() == 8 && version.starts_with("HTTP/") && is_digit(version[5]) &&
                     version[6] == '.' && is_digit(version[7]);
  if (other) return {505, "version is not 1.0 or 1.1"};
  return bad("request line without a version");
}

Refusal request_line_refusal(std::string_view line) {
  const std::size_t first = line.find(' ');
  const std::size_t last = line.rfind(' ');
  if (first == std::string_view::npos || first == last) return bad("request line");
  const std::string_view target = line.substr(first + 1, last - first - 1);
  if (!is_token(line.substr(0, first))) return bad("method");
  const bool wrong = target.empty() || std::any_of(target.begin(), target.end(), [](char c) {
                       return c == ' ' || c == '#' || is_control(c);
                     });
  if (wrong) return bad("request target");
  return version_refusal(line.substr(last + 1));
}

// The fields that decide where a request ends and whom it is for.
struct Framing {
  std::size_t hosts = 0;
  std::size_t lengths = 0;
  std::size_t encodings = 0;
  std::string_view length;
  std::string_view encoding;

  Refusal note(std::string_view name, std::string_view value) {
    if (equal_ignoring_case(name, "host")) {
      ++hosts;
      if (!is_host(value)) return bad("Host");
    } else if (equal_ignoring_case(name, "content-length")) {
      ++lengths;
      length = value;
    } else if (equal_ignoring_case(name, "transfer-encoding")) {
      ++encodings;
      encoding = value;
    }
    return {};
  }

  Refusal refusal(bool old_version) const {
    if (hosts != 1) return bad(hosts == 0 ? "no Host" : "two Hosts");
    if (lengths > 1) return bad("two Content-Lengths");
    if (lengths > 0 && encodings > 0) return bad("Content-Length with Transfer-Encoding");
    if (lengths > 0) return length_refusal();
    if (encodings == 0) return {};
    if (encodings > 1 || old_version) return bad("Transfer-Encoding");
    if (!equal_ignoring_case(encoding, "chunked")) return {501, "Transfer-Encoding"};
    return {};
  }

  Refusal length_refusal() const {
    // 18 digits fit 64 bits, and no limit is near them.
    constexpr std::size_t kMostDigits = 18;
    const bool digits = !length.empty() && std::all_of(length.begin(), length.end(), is_digit);
    if (!digits) return bad("Content-Length");
    if (length.size() > kMostDigits) return {413, "Content-Length"};
    return {};
  }
};

Refusal field_refusal(std::string_view line, Framing& framing) {
  if (line.front() == ' ' || line.front() == '\t') return bad("folded field");
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return bad("field without a colon");
  const std::string_view name = line.substr(0, colon);
  if (!is_token(name)) return bad("field name");
  const std::string_view value = trimmed(line.substr(colon + 1));
  const bool wrong =
      std::any_of(value.begin(), value.end(), [](char c) { return is_control(c) && c != '\t'; });
  if (wrong) return bad("field value");
  return framing.note(name, value);
}

}  // namespace

// Bytes above ASCII are taken.
bool is_host(std::string_view text) {
  constexpr std::string_view kExcluded = "\"<>\\^`{|}/?#@ ";
  return !text.empty() && std::none_of(text.begin(), text.end(), [&](char c) {
    return is_control(c) || kExcluded.find(c) != std::string_view::npos;
  });
}

HeaderScan::State HeaderScan::refuse(int status, const char* reason) {
  refusal_ = {status, reason};
  return State::Refused;
}

HeaderScan::State HeaderScan::end_line() {
  const bool empty = at_ == line_ + kLineEnd.size();
  if (empty && lines_ > 0) return State::Complete;
  if (empty) {
    if (at_ > kMaxEmptyLines * kLineEnd.size()) return refuse(400, "empty lines");
    begin_ = at_;
  } else if (++lines_ > limits_.fields + 1) {
    return refuse(431, "too many fields");
  }
  line_ = at_;
  return State::More;
}

HeaderScan::State HeaderScan::feed(std::string_view received) {
  if (refusal_) return State::Refused;
  while (at_ < received.size()) {
    const char c = received[at_++];
    if (c == '\0') return refuse(400, "NUL");
    if (carriage_return_ != (c == '\n')) return refuse(400, "line end");
    carriage_return_ = c == '\r';
    // The two bytes of the line's end are not counted.
    if (lines_ == 0 && at_ - line_ > limits_.line_bytes + kLineEnd.size()) {
      return refuse(414, "request line too long");
    }
    if (at_ - begin_ > limits_.header_bytes) return refuse(431, "header too large");
    if (c != '\n') continue;
    const State state = end_line();
    if (state != State::More) return state;
  }
  return State::More;
}

Refusal reject_reason(std::string_view header) {
  const std::size_t first_end = header.find(kLineEnd);
  if (first_end == std::string_view::npos) return bad("request line");
  const std::string_view request_line = header.substr(0, first_end);
  if (const Refusal refusal = request_line_refusal(request_line)) return refusal;
  header.remove_prefix(first_end + kLineEnd.size());
  Framing framing;
  while (!header.starts_with(kLineEnd)) {
    const std::size_t end = header.find(kLineEnd);
    if (end == std::string_view::npos) return bad("header without an end");
    if (const Refusal refusal = field_refusal(header.substr(0, end), framing)) return refusal;
    header.remove_prefix(end + kLineEnd.size());
  }
  return framing.refusal(request_line.ends_with("HTTP/1.0"));
}

}  // namespace rk::http
