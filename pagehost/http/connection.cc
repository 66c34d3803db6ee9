#include "pagehost/http/connection.h"

#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <charconv>
#include <cstdio>
#include <optional>

#include "pagehost/http/forwarded.h"
#include "pagehost/http/page_answerer.h"
#include "pagehost/http/request_reader.h"
#include "pagehost/http/static_answer.h"
#include "pagehost/http/target.h"
#include "pagehost/http/wire.h"
#include "pagehost/pages/http_dates.h"
#include "value/text.h"

namespace rk::http {
namespace {

namespace net = boost::asio;
using boost::system::error_code;
using net::ip::tcp;
using SteadyClock = std::chrono::steady_clock;

// Read at once from a connection: a usual request whole, and small enough for thousands of them.
constexpr std::size_t kReadBytes = 8192;
// Of a file at a time, and so what a slow visitor of a large one costs.
constexpr std::size_t kFileBytes = std::size_t{32} << 10;
// An answer that is left to the event loop is copied: so much costs less than waking its visitor.
constexpr std::size_t kLeftBytes = std::size_t{32} << 10;
// Chunks of a file in a row before other connections have their turn.
constexpr int kChunksInARow = 16;
// How long a refused visitor may go on sending, so that it reads the refusal before the end.
constexpr std::chrono::seconds kLinger{2};
// After stop(): how long a connection without a request is kept, since one may be on its way.
constexpr std::chrono::milliseconds kCrossing{500};
// How often a visitor whose page waits for its turn is looked for: one who closed the connection
// frees what he waits for. Pages that wait less are not worth the look.
constexpr std::chrono::seconds kVisitorCheck{1};
constexpr std::string_view kRetryAfterSeconds = "5";
// What the access log says of a visitor who did not wait for his answer; nobody is sent it.
constexpr int kVisitorGone = 499;

class HttpConnection final : public Connection,
                             public PageTask,
                             public std::enable_shared_from_this<HttpConnection> {
 public:
  HttpConnection(Hub& hub, tcp::socket socket)
      : hub_(hub),
        socket_(std::move(socket)),
        reader_(hub.options.header, hub.options.max_body_bytes) {}

  void start() override;
  SteadyClock::time_point deadline() const override;
  void meet_deadline() override;
  void conclude_page() override;
  void break_off() override;
  void run() noexcept override;  // the page, on its thread
  bool is_abandoned() const noexcept override { return turn_state_ == TurnState::Abandoned; }

 private:
  enum class State : std::uint8_t { Reading, Page, Sending, Lingering, Closed };
  // Of State::Page: whether its turn has come. The page's thread and the event loop's settle by it
  // who has the connection.
  enum class TurnState : std::uint8_t { Waiting, Running, Abandoned };

  Wire wire() { return Wire(socket_.native_handle()); }
  bool may_keep_alive() const {
    return request().keep_alive && !hub_.stopping.load(std::memory_order_relaxed);
  }
  ReadRequest& request() { return reader_.request(); }
  const ReadRequest& request() const { return reader_.request(); }

  void next_request();
  void await_request();
  void set_deadline(SteadyClock::time_point when) {
    deadline_.store(when.time_since_epoch().count(), std::memory_order_relaxed);
  }
  void set_deadline(std::chrono::milliseconds from_now) {
    set_deadline(SteadyClock::now() + from_now);
  }
  void receive();
  void take_received(std::string_view bytes);
  void proceed();
  void dispatch();
  void follow(const Route& way);
  void identify();
  void start_page(bool not_found);
  void look_for_visitor();
  void enqueue(pagehost::SessionTurn turn);
  void answer_page(PageAnswerer& answerer);
  void finish_page(PageAnswerer& answerer, pagehost::PageAnswer answer);
  void refuse(int status);
  void refuse_method(const char* allowed);
  void refuse_busy();
  void answer_file(const std::string& path);
  void send_own(const pagehost::PageAnswer& answer);
  void send_head(const pagehost::PageAnswer& answer, std::uint64_t length);
  void pump();
  bool send_out();
  bool refill();
  void end_exchange();
  void linger();
  void log_access();
  void close();

  Hub& hub_;
  tcp::socket socket_;
  std::string address_;  // of the other end
  std::string visitor_;  // the same, or whom its last request came from by a proxy's word
  std::uint16_t port_ = 0;
  std::string local_address_;
  std::uint16_t local_port_ = 0;

  std::atomic<State> state_{State::Reading};
  std::atomic<SteadyClock::rep> deadline_{
      SteadyClock::time_point::max().time_since_epoch().count()};
  std::atomic<bool> idle_{false};  // no byte of a request yet
  bool receiving_ = false;
  std::array<char, kReadBytes> chunk_;
  RequestReader reader_;
  bool keep_alive_ = true;
  bool head_only_ = false;

  bool not_found_ = false;
  std::atomic<TurnState> turn_state_{TurnState::Waiting};
  pagehost::SessionTurn turn_;
  bool gone_ = false;  // the visitor takes nothing any more

  int status_ = 0;
  std::uint64_t body_bytes_ = 0;
  std::string log_note_;  // of the page, for the access log
  std::string out_;
  std::size_t out_at_ = 0;
  std::unique_ptr<SiteFile> file_;
  std::uint64_t file_at_ = 0;
  std::uint64_t file_left_ = 0;
};

// ---- from the first byte to a whole request

void HttpConnection::start() {
  error_code ignored;
  socket_.set_option(tcp::no_delay(true), ignored);
  socket_.non_blocking(true, ignored);
  const tcp::endpoint remote = socket_.remote_endpoint(ignored);
  const tcp::endpoint local = socket_.local_endpoint(ignored);
  address_ = remote.address().to_string();
  visitor_ = address_;
  port_ = remote.port();
  local_address_ = local.address().to_string();
  local_port_ = local.port();
  idle_.store(true);
  set_deadline(hub_.options.header_time);
  receive();
}

void HttpConnection::next_request() {
  if (!reader_.has_more()) return await_request();
  state_ = State::Reading;
  reader_.restart();
  set_deadline(hub_.options.idle_time);
  // By way of the queue, so that a thousand requests in one packet neither nest nor keep others
  // out.
  net::post(hub_.io, [self = shared_from_this()] {
    if (self->state_ == State::Reading) self->proceed();
  });
}

// On either thread. Once it waits, the event loop has the connection.
void HttpConnection::await_request() {
  reader_.restart();
  set_deadline(hub_.options.idle_time);
  idle_.store(true);
  state_ = State::Reading;
  receive();
}

void HttpConnection::receive() {
  if (receiving_) return;
  receiving_ = true;
  socket_.async_read_some(net::buffer(chunk_),
                          [self = shared_from_this()](error_code error, std::size_t count) {
                            self->receiving_ = false;
                            if (self->state_ == State::Closed) return;
                            if (error) return self->close();
                            self->take_received(std::string_view(self->chunk_.data(), count));
                          });
}

void HttpConnection::take_received(std::string_view bytes) {
  if (state_ == State::Lingering) return receive();
  if (state_ != State::Reading) return;
  idle_.store(false);
  reader_.append(bytes);
  proceed();
}

void HttpConnection::proceed() {
  const RequestReader::State before = reader_.state();
  const RequestReader::State state = reader_.proceed();
  if (state == RequestReader::State::Complete) return dispatch();
  if (state == RequestReader::State::Refused) return refuse(reader_.refused_status());
  if (state != before) {
    const bool body = state == RequestReader::State::Body;
    set_deadline(body ? hub_.options.body_time : hub_.options.header_time);
    // A socket that has sent nothing for this request takes these few bytes at once.
    if (body && reader_.waits_for_continue()) wire().send_now("HTTP/1.1 100 Continue\r\n\r\n");
  }
  receive();
}

// ---- from a request to its answer

void HttpConnection::dispatch() {
  set_deadline(SteadyClock::time_point::max());
  keep_alive_ = may_keep_alive();
  log_note_.clear();
  pagehost::PageRequest& page = request().page;
  head_only_ = page.method == "HEAD";
  std::optional<Target> target =
      parse_target(request().target, hub_.parts.pages->code_page(), *hub_.parts.code_pages);
  if (!target) return refuse(400);
  page.path = std::move(target->path);
  page.query = std::move(target->query);
  for (auto& [name, value] : page.headers) {
    if (!target->authority.empty() && equal_ignoring_case(name, "host")) value = target->authority;
  }
  identify();
  if (page.method != "GET" && page.method != "POST" && !head_only_) {
    return refuse_method("GET, HEAD, POST");
  }
  follow(route(page.path, hub_.options.rules, *hub_.parts.files));
}

// Whose request it is, and what the log calls it.
void HttpConnection::identify() {
  pagehost::PageRequest& page = request().page;
  page.id = hub_.request_ids.next();
  page.remote_address = address_;
  page.remote_port = port_;
  page.local_address = local_address_;
  page.local_port = local_port_;
  believe_proxy(page, hub_.options.proxies);
  visitor_ = page.remote_address;
}

void HttpConnection::follow(const Route& way) {
  switch (way.kind) {
    case Route::Kind::Page:
      request().page.path = way.path;
      request().page.path_info = way.path_info;
      return start_page(false);
    case Route::Kind::File:
      return answer_file(way.path);
    case Route::Kind::Folder:
      return send_own(folder_redirect(way.path, request().page.query));
    case Route::Kind::Nothing:
      return start_page(true);
  }
}

void HttpConnection::start_page(bool not_found) {
  turn_state_ = TurnState::Waiting;
  state_ = State::Page;
  not_found_ = not_found;
  if (not_found) request().page.missed_address = request().target;
  set_deadline(kVisitorCheck);
  const auto self = shared_from_this();
  const bool admitted = hub_.parts.pages->admit(
      request().page, [self](pagehost::SessionTurn turn) { self->enqueue(std::move(turn)); },
      [self] { return !self->is_abandoned(); });
  if (!admitted) refuse_busy();
}

// On any thread.
void HttpConnection::enqueue(pagehost::SessionTurn turn) {
  if (is_abandoned()) return;  // and gives the turn back
  turn_ = std::move(turn);
  if (hub_.pool->submit(shared_from_this())) return;
  net::post(hub_.io, [self = shared_from_this()] {
    self->turn_ = pagehost::SessionTurn();
    if (!self->is_abandoned()) self->refuse_busy();
  });
}

// On the page's thread.
void HttpConnection::run() noexcept {
  TurnState waiting = TurnState::Waiting;
  if (!turn_state_.compare_exchange_strong(waiting, TurnState::Running)) {
    turn_ = pagehost::SessionTurn();
    return;  // the event loop has closed the connection
  }
  set_deadline(SteadyClock::time_point::max());
  const ExchangeTerms terms{keep_alive_, request().old_version, head_only_, hub_.options.send_time};
  PageAnswerer answerer(wire(), terms, [this] { return hub_.date.now(); });
  answer_page(answerer);
  // OPTIMIZATION: where all is sent and nothing more has come, this thread itself begins the wait
  // for the next request, which spares the event loop a turn for each page.
  const bool settled = !gone_ && out_.empty() && keep_alive_ && !reader_.has_more();
  if (settled) {
    log_access();
    return await_request();
  }
  if (hub_.outbox.leave(shared_from_this())) return;
  net::post(hub_.io, [self = shared_from_this()] { self->conclude_page(); });
}

void HttpConnection::conclude_page() {
  if (gone_) return close();
  pump();
}

// The page run itself answers for what a page does; what comes out of it here is its own failure.
void HttpConnection::answer_page(PageAnswerer& answerer) {
  Pages& pages = *hub_.parts.pages;
  const pagehost::PageRequest& page = request().page;
  try {
    finish_page(answerer, not_found_ ? pages.answer_not_found(page, std::move(turn_), &answerer)
                                     : pages.run(page, std::move(turn_), &answerer));
  } catch (const std::exception& failure) {
    hub_.parts.log->error("[" + page.id + "] " + page.path + ": " + failure.what());
    if (answerer.began()) {
      answerer.break_off();
    } else {
      answerer.finish(plain_answer(500));
    }
  }
  keep_alive_ = answerer.keeps_alive();
  gone_ = answerer.gone();
  status_ = answerer.status();
  body_bytes_ = answerer.body_bytes();
  out_ = answerer.take_left_over();
}

// OPTIMIZATION: where the event loop sends answers in a row, it sends this one too.
void HttpConnection::finish_page(PageAnswerer& answerer, pagehost::PageAnswer answer) {
  log_note_ = std::move(answer.log_note);
  if (hub_.outbox.is_open() && answer.body.size() <= kLeftBytes) {
    answerer.finish_unsent(std::move(answer));
  } else {
    answerer.finish(std::move(answer));
  }
}

void HttpConnection::refuse(int status) {
  keep_alive_ = false;
  head_only_ = false;
  send_own(plain_answer(status));
}

// The connection stays: the request itself was whole.
void HttpConnection::refuse_method(const char* allowed) {
  pagehost::PageAnswer answer = plain_answer(405);
  answer.headers.emplace_back("Allow", allowed);
  send_own(answer);
}

void HttpConnection::refuse_busy() {
  pagehost::PageAnswer answer = plain_answer(503);
  answer.headers.emplace_back("Retry-After", kRetryAfterSeconds);
  send_own(answer);
}

void HttpConnection::answer_file(const std::string& path) {
  const pagehost::PageRequest& page = request().page;
  file_ = hub_.parts.site_files->open(hub_.options.rules.site_root + path);
  std::array<char, kDatabaseStartBytes> start;
  const std::size_t length = file_ ? file_->read_at(0, start.data(), start.size()) : 0;
  if (!file_ || begins_as_database(std::string_view(start.data(), length))) {
    file_.reset();
    return start_page(true);
  }
  if (page.method == "POST") {
    file_.reset();
    return refuse_method("GET, HEAD");
  }
  const StaticAnswer answer = static_answer(page, path, file_->stamp());
  file_at_ = answer.offset;
  file_left_ = head_only_ ? 0 : answer.count;
  body_bytes_ = file_left_;
  send_head(answer.head, answer.count);
  if (file_left_ > 0) refill();
  pump();
}

// ---- out to the visitor, on the thread of run()

void HttpConnection::send_head(const pagehost::PageAnswer& answer, std::uint64_t length) {
  status_ = answer.status;
  const std::string date = hub_.date.now();
  HeadFraming framing;
  if (has_body(answer.status)) framing.length = length;
  framing.keep_alive = keep_alive_;
  framing.old_version = request().old_version;
  framing.date = date;
  out_ = answer_head(answer, framing);
  out_at_ = 0;
}

void HttpConnection::send_own(const pagehost::PageAnswer& answer) {
  send_head(answer, answer.body.size());
  if (!head_only_) out_.append(answer.body);
  body_bytes_ = head_only_ ? 0 : answer.body.size();
  pump();
}

// The next piece of the file behind what is to be sent; false where the file gives no more.
bool HttpConnection::refill() {
  const std::size_t before = out_.size();
  const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(file_left_, kFileBytes));
  out_.resize(before + wanted);
  const std::size_t count = file_->read_at(file_at_, out_.data() + before, wanted);
  out_.resize(before + count);
  file_at_ += count;
  file_left_ -= count;
  return count > 0;
}

// False where the rest goes out later, or the connection has ended.
bool HttpConnection::send_out() {
  while (out_at_ < out_.size()) {
    const std::optional<std::size_t> sent = wire().send_now(std::string_view(out_).substr(out_at_));
    if (!sent) {
      close();
      return false;
    }
    out_at_ += *sent;
    if (*sent > 0) continue;
    socket_.async_wait(tcp::socket::wait_write, [self = shared_from_this()](error_code error) {
      if (self->state_ != State::Sending) return;
      if (error) return self->close();
      self->pump();
    });
    return false;
  }
  out_.clear();
  out_at_ = 0;
  return true;
}

void HttpConnection::pump() {
  state_ = State::Sending;
  set_deadline(hub_.options.send_time);
  for (int chunk = 0; chunk < kChunksInARow; ++chunk) {
    if (!send_out()) return;
    if (file_left_ == 0) return end_exchange();
    // A file cut short meanwhile cannot keep its promise of a length.
    if (!refill()) return close();
  }
  net::post(hub_.io, [self = shared_from_this()] {
    if (self->state_ == State::Sending) self->pump();
  });
}

void HttpConnection::end_exchange() {
  file_.reset();
  out_ = std::string();
  log_access();
  // Also while the server stops: the answer did not say that it was the last.
  if (keep_alive_) return next_request();
  linger();
}

// Closing with bytes unread would reset the connection before the visitor has read the answer.
void HttpConnection::linger() {
  if (reader_.state() == RequestReader::State::Complete && !reader_.has_more()) return close();
  error_code ignored;
  socket_.shutdown(tcp::socket::shutdown_send, ignored);
  state_ = State::Lingering;
  set_deadline(kLinger);
  receive();
}

void HttpConnection::log_access() {
  if (!hub_.access_log.is_on()) return;
  AccessRecord record;
  record.address = visitor_;
  record.time = std::time(nullptr);
  record.request_line = request().line;
  record.status = status_;
  record.bytes = body_bytes_;
  record.referer = request().page.header("Referer");
  record.user_agent = request().page.header("User-Agent");
  record.note = log_note_;
  hub_.access_log.write(record);
}

// ---- ends

void HttpConnection::meet_deadline() {
  if (state_ == State::Page) return look_for_visitor();
  if (state_ != State::Reading) return close();
  const RequestReader::State read = reader_.state();
  if (read == RequestReader::State::Header || read == RequestReader::State::Body) {
    return refuse(408);
  }
  // What has come already, but was not told to this thread yet, came in time.
  if (wire().has_bytes()) return set_deadline(hub_.options.header_time);
  close();
}

// A page that waits for its turn, and nobody for the page, is left out. Where the page runs by now,
// the deadline may be another's already.
void HttpConnection::look_for_visitor() {
  SteadyClock::rep seen = deadline_.load();
  if (turn_state_ != TurnState::Waiting) return;
  TurnState waiting = TurnState::Waiting;
  if (!wire().is_connected() &&
      turn_state_.compare_exchange_strong(waiting, TurnState::Abandoned)) {
    status_ = kVisitorGone;
    log_access();
    return close();
  }
  const auto next = SteadyClock::now() + kVisitorCheck;
  deadline_.compare_exchange_strong(seen, next.time_since_epoch().count());
}

// After the server's stop a connection between two requests is kept only for what may be on its
// way.
SteadyClock::time_point HttpConnection::deadline() const {
  const SteadyClock::time_point own{
      SteadyClock::duration(deadline_.load(std::memory_order_relaxed))};
  if (!hub_.stopping.load() || !idle_.load()) return own;
  const SteadyClock::time_point waits_since = own - hub_.options.idle_time;
  return std::min(own, std::max(hub_.stopped_at, waits_since) + kCrossing);
}

void HttpConnection::break_off() {
  ::shutdown(socket_.native_handle(), SHUT_RDWR);
}

void HttpConnection::close() {
  if (state_ == State::Closed) return;
  state_ = State::Closed;
  error_code ignored;
  socket_.close(ignored);
  file_.reset();
  hub_.connections.erase(shared_from_this());
  hub_.on_closed();
}

}  // namespace

std::string DateField::now() {
  const std::time_t second = std::time(nullptr);
  const std::lock_guard lock(mutex_);
  if (second != second_) {
    second_ = second;
    text_ = pagehost::date_header(second);
  }
  return text_;
}

RequestIds::RequestIds() {
  std::array<char, 12> text{};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now).count();
  const int length = std::snprintf(text.data(), text.size(), "%08llx-",
                                   static_cast<unsigned long long>(seconds) & 0xFFFFFFFF);
  start_.assign(text.data(), static_cast<std::size_t>(length));
}

std::string RequestIds::next() {
  std::array<char, 16> digits;
  const std::uint64_t number = last_.fetch_add(1, std::memory_order_relaxed) + 1;
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, 16).ptr;
  return std::string(start_).append(digits.data(), end);
}

std::shared_ptr<Connection> make_connection(Hub& hub, int socket, bool v6) {
  tcp::socket taken(hub.io, v6 ? tcp::v6() : tcp::v4(), socket);
  return std::make_shared<HttpConnection>(hub, std::move(taken));
}

}  // namespace rk::http
