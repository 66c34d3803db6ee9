#include "pagehost/http/request_reader.h"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>

#include "pagehost/http/chunked_body.h"
#include "value/text.h"

namespace rk::http {
namespace {

namespace beast_http = boost::beast::http;
using boost::system::error_code;

// A buffer past this is given back after its request, so that a large one is not paid for ever.
constexpr std::size_t kKeptBufferBytes = std::size_t{16} << 10;

std::string_view trimmed(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

}  // namespace

// The parser reads the header and a body of a known length; a chunked body has a reader of its own.
struct RequestReader::Message {
  explicit Message(std::uint64_t max_body_bytes) : chunks(max_body_bytes) {}

  bool is_done() const { return chunked ? chunks.complete() : parser.is_done(); }

  beast_http::request_parser<beast_http::string_body> parser;
  ChunkedBody chunks;
  bool chunked = false;
};

RequestReader::RequestReader(const HeaderLimits& limits, std::uint64_t max_body_bytes)
    : limits_(limits), max_body_bytes_(max_body_bytes), scan_(limits) {}

RequestReader::~RequestReader() = default;

RequestReader::State RequestReader::refuse(int status) {
  refused_status_ = status;
  state_ = State::Refused;
  return state_;
}

void RequestReader::restart() {
  received_.erase(0, used_);
  used_ = 0;
  if (received_.empty() && received_.capacity() > kKeptBufferBytes) received_ = std::string();
  scan_ = HeaderScan(limits_);
  message_.reset();
  request_ = ReadRequest();
  waits_for_continue_ = false;
  state_ = State::Idle;
}

RequestReader::State RequestReader::proceed() {
  if (state_ == State::Idle && !pending().empty()) state_ = State::Header;
  if (state_ == State::Header) return read_header();
  if (state_ == State::Body) return read_body();
  return state_;
}

RequestReader::State RequestReader::read_header() {
  const HeaderScan::State seen = scan_.feed(pending());
  if (seen == HeaderScan::State::More) return state_;
  if (seen == HeaderScan::State::Refused) return refuse(scan_.refusal().status);
  const std::string_view header = pending().substr(scan_.begin(), scan_.end() - scan_.begin());
  request_.line = header.substr(0, header.find('\r'));
  if (const Refusal refusal = reject_reason(header)) return refuse(refusal.status);
  return begin_message(header);
}

RequestReader::State RequestReader::begin_message(std::string_view header) {
  message_ = std::make_unique<Message>(max_body_bytes_);
  auto& parser = message_->parser;
  parser.header_limit(static_cast<std::uint32_t>(header.size() + 1));
  parser.body_limit(max_body_bytes_);
  error_code error;
  parser.put(boost::asio::buffer(header.data(), header.size()), error);
  used_ += scan_.end();
  if (error == beast_http::error::body_limit) return refuse(413);
  if (error && error != beast_http::error::need_more) return refuse(400);
  take_header(header);
  message_->chunked = parser.chunked();
  if (!message_->is_done()) {
    const std::string_view expected = request_.page.header("Expect");
    const bool asks = equal_ignoring_case(expected, "100-continue");
    if (!expected.empty() && !asks) return refuse(417);
    waits_for_continue_ = asks && !request_.old_version && pending().empty();
  }
  parser.eager(true);
  state_ = State::Body;
  return read_body();
}

// The fields in the order in which they were sent, from the header itself: the parser puts fields
// of one name together, and adds the trailers behind a chunked body.
void RequestReader::take_header(std::string_view header) {
  const auto& message = message_->parser.get();
  pagehost::PageRequest& page = request_.page;
  page.method = std::string(message.method_string());
  page.headers.reserve(16);
  header.remove_prefix(header.find('\n') + 1);
  while (!header.starts_with("\r\n")) {
    const std::size_t end = header.find("\r\n");
    const std::size_t colon = header.find(':');
    page.headers.emplace_back(header.substr(0, colon),
                              trimmed(header.substr(colon + 1, end - colon - 1)));
    header.remove_prefix(end + 2);
  }
  request_.target = std::string(message.target());
  request_.old_version = message.version() == 10;
  request_.keep_alive = message.keep_alive();
  page.protocol = request_.old_version ? "HTTP/1.0" : "HTTP/1.1";
}

RequestReader::State RequestReader::read_body() {
  while (!message_->is_done() && !pending().empty()) {
    const std::size_t before = used_;
    const int refused = message_->chunked ? read_chunks() : read_counted();
    if (refused != 0) return refuse(refused);
    if (used_ == before) break;  // the parser wants more at once
  }
  received_.erase(0, used_);
  used_ = 0;
  if (!message_->is_done()) return state_;
  request_.page.body =
      message_->chunked ? message_->chunks.take() : std::move(message_->parser.get().body());
  state_ = State::Complete;
  return state_;
}

// These take of what is pending; 0, or the status of a refusal.
int RequestReader::read_chunks() {
  used_ += message_->chunks.feed(pending());
  return message_->chunks.refused_status();
}

int RequestReader::read_counted() {
  error_code error;
  const std::string_view bytes = pending();
  used_ += message_->parser.put(boost::asio::buffer(bytes.data(), bytes.size()), error);
  if (!error || error == beast_http::error::need_more) return 0;
  return error == beast_http::error::body_limit ? 413 : 400;
}

}  // namespace rk::http
